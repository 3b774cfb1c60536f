# The resources of the programs. Scripts draw the pictures at build time.

set(QM5R_RESOURCES ${CMAKE_SOURCE_DIR}/src/windows/resources)
set(QM5R_GENERATED ${CMAKE_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${QM5R_GENERATED})

# A file drawn by a script in scripts/, with the script's arguments after the file's name.
function(drawn_file file script)
  set(scripts ${CMAKE_SOURCE_DIR}/scripts/${script} ${CMAKE_SOURCE_DIR}/scripts/drawing.py)
  add_custom_command(OUTPUT ${QM5R_GENERATED}/${file}
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/scripts/${script} ${QM5R_GENERATED}/${file} ${ARGN}
    DEPENDS ${scripts} VERBATIM)
  add_custom_target(${file}_file DEPENDS ${QM5R_GENERATED}/${file})
endfunction()
drawn_file(progress.avi make_progress_clip.py)
drawn_file(progress144.avi make_progress_clip.py 144)
drawn_file(progress192.avi make_progress_clip.py 192)
drawn_file(window.ico make_icon.py)
drawn_file(product.bmp make_product_picture.py)
drawn_file(worldmap.gif make_world_map.py)

# Adds one resource to a program, as a separate resource script. `resource` is the text before the file's name in it.
function(embed_resource target resource file)
  string(MAKE_C_IDENTIFIER ${target}_${resource} name)
  file(GENERATE OUTPUT ${QM5R_GENERATED}/${name}.rc CONTENT "${resource} \"${file}\"\n")
  set_source_files_properties(${QM5R_GENERATED}/${name}.rc PROPERTIES GENERATED ON OBJECT_DEPENDS ${file})
  target_sources(${target} PRIVATE ${QM5R_GENERATED}/${name}.rc)
endfunction()
function(embed_drawn target resource file)
  embed_resource(${target} ${resource} ${QM5R_GENERATED}/${file})
  add_dependencies(${target} ${file}_file)
endfunction()

# The current common controls, text at the screen's own resolution, and no elevation or virtual registry.
function(common_manifest target)
  embed_resource(${target} "1 24" ${QM5R_RESOURCES}/common.manifest)
endfunction()

# Name and version as Windows shows them, from the project's version number.
function(file_version target description)
  get_target_property(file ${target} OUTPUT_NAME)
  if(NOT file)
    set(file ${target})
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL EXECUTABLE)
    set(kind VFT_APP)
    set(suffix .exe)
  else()
    set(kind VFT_DLL)
    set(suffix .dll)
  endif()
  configure_file(${QM5R_RESOURCES}/version.rc.in ${QM5R_GENERATED}/${target}_version.rc @ONLY)
  target_sources(${target} PRIVATE ${QM5R_GENERATED}/${target}_version.rc)
endfunction()

# For a program that shows the plug-in's windows: their icon, which is also the program's only icon, the clip
# of the progress window, also for higher resolutions, and the picture in the main window's heading.
function(window_pictures target)
  embed_drawn(${target} "WINDOW ICON" window.ico)
  embed_drawn(${target} "201 AVI" progress.avi)
  embed_drawn(${target} "AT144_201 AVI" progress144.avi)
  embed_drawn(${target} "AT192_201 AVI" progress192.avi)
  embed_drawn(${target} "301 BITMAP" product.bmp)
endfunction()
