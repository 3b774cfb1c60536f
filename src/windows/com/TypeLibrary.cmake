# type_library(<target> <interface.idl>): compiles an interface description to a header and to a type library
# that programs contain as resource 1. Link <target> to the program that contains it, <target>_header to the
# code that implements it. Type libraries differ between 32 and 64 bits, so each build has its own.

set(QM5R_WIDL "widl" CACHE STRING "Compiler of interface descriptions")
file(GLOB wine_folders /usr/lib/*/wine/x86_64-windows)
find_path(QM5R_STDOLE_DIR stdole2.tlb PATHS ${wine_folders} $ENV{SystemRoot}/System32 NO_CMAKE_FIND_ROOT_PATH REQUIRED
  DOC "Folder of automation's own type library")

function(type_library target idl)
  cmake_path(ABSOLUTE_PATH idl)
  cmake_path(GET idl STEM name)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/${target})
  file(MAKE_DIRECTORY ${out})
  # C++ takes the declarations of the base description from the system's header.
  file(CONFIGURE OUTPUT ${out}/automation_base.h CONTENT "#include <oaidl.h>\n")
  file(CONFIGURE OUTPUT ${out}/${name}.rc CONTENT "1 TYPELIB \"${name}.tlb\"\n")
  set(compile ${CMAKE_SOURCE_DIR}/scripts/compile_type_library.py)
  set(widl ${QM5R_WIDL} -I${CMAKE_CURRENT_FUNCTION_LIST_DIR} -L${QM5R_STDOLE_DIR})
  add_custom_command(OUTPUT ${out}/${name}.h
    COMMAND ${widl} -h -o ${out}/${name}.h ${idl} DEPENDS ${idl} ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/automation_base.idl VERBATIM)
  add_custom_command(OUTPUT ${out}/${name}.tlb
    COMMAND Python3::Interpreter ${compile} ${out}/${name}.tlb ${widl} ${idl}
    DEPENDS ${compile} ${idl} ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/automation_base.idl VERBATIM)
  add_library(${target} OBJECT ${out}/${name}.rc)
  set_source_files_properties(${out}/${name}.rc PROPERTIES OBJECT_DEPENDS ${out}/${name}.tlb)
  add_custom_target(${target}_files DEPENDS ${out}/${name}.h ${out}/${name}.tlb)
  add_dependencies(${target} ${target}_files)
  add_library(${target}_header INTERFACE)
  add_dependencies(${target}_header ${target}_files)
  target_include_directories(${target}_header SYSTEM INTERFACE ${out})
endfunction()
