# One folder of src/ is one layer and one target. A layer is included as "layer/file.h", through an include
# directory that holds this layer alone: what a layer does not name under USES (or what those use) it cannot include.

set(QM5R_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  list(APPEND QM5R_WARNINGS -Wno-restrict)  # GCC 12 sees overlaps in std::string that cannot be
endif()

add_library(qm5r_options INTERFACE)
target_compile_features(qm5r_options INTERFACE cxx_std_20)
target_compile_options(qm5r_options INTERFACE ${QM5R_WARNINGS})
if(QM5R_SANITIZE)
  target_compile_options(qm5r_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qm5r_options INTERFACE -fsanitize=address,undefined)
endif()
if(QM5R_FUZZ)
  target_compile_options(qm5r_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(WIN32)
  target_compile_definitions(qm5r_options INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  target_compile_options(qm5r_options INTERFACE -ffunction-sections -fdata-sections)
  target_link_options(qm5r_options INTERFACE -Wl,--gc-sections)
  # Windows 7 is the first that the programs run on; for older subsystems some of its parts behave as before it.
  foreach(part os subsystem)
    target_link_options(qm5r_options INTERFACE -Wl,--major-${part}-version=6,--minor-${part}-version=1)
  endforeach()
  # The same sources give the same program wherever and whenever they are built.
  target_compile_options(qm5r_options INTERFACE -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
  target_link_options(qm5r_options INTERFACE -Wl,--no-insert-timestamp)
endif()

# layer(<path under src> SOURCES <files> [USES <layers>] [LIBRARIES <link items>])
function(layer path)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name ${path})
  set(root ${CMAKE_BINARY_DIR}/include/${name})
  get_filename_component(parent ${root}/${path} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${path} ${root}/${path} SYMBOLIC)
  list(TRANSFORM ARG_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/src/${path}/)
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${root})
  list(TRANSFORM ARG_USES REPLACE "/" "_")
  target_link_libraries(${name} PUBLIC ${ARG_USES} ${ARG_LIBRARIES} PRIVATE qm5r_options)
endfunction()

# A header-only library of the build machine, offered alone: the rest of its include folder stays out of sight.
function(header_only_library name header)
  find_path(${name}_DIR ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  get_filename_component(folder ${header} DIRECTORY)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/include/${name})
  file(CREATE_LINK ${${name}_DIR}/${folder} ${CMAKE_BINARY_DIR}/include/${name}/${folder} SYMBOLIC)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/include/${name})
endfunction()
