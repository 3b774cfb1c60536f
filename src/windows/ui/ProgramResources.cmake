# What a program with windows carries in its resources.

set(QM5R_COMMON_MANIFEST ${CMAKE_CURRENT_LIST_DIR}/common.manifest CACHE INTERNAL "")
set(QM5R_PROGRESS_CLIP ${CMAKE_BINARY_DIR}/generated/progress.avi CACHE INTERNAL "")
set(QM5R_CLIP_SCRIPT ${CMAKE_SOURCE_DIR}/scripts/make_progress_clip.py)

find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_custom_command(OUTPUT ${QM5R_PROGRESS_CLIP}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/generated
  COMMAND Python3::Interpreter ${QM5R_CLIP_SCRIPT} ${QM5R_PROGRESS_CLIP}
  DEPENDS ${QM5R_CLIP_SCRIPT} VERBATIM)
add_custom_target(progress_clip_file DEPENDS ${QM5R_PROGRESS_CLIP})

# Adds one resource, as a script of its own, to a program.
function(embed_resource target name line depends)
  set(script ${CMAKE_BINARY_DIR}/generated/${target}_${name}.rc)
  file(GENERATE OUTPUT ${script} CONTENT "${line}\n")
  set_source_files_properties(${script} PROPERTIES GENERATED ON OBJECT_DEPENDS "${depends}")
  target_sources(${target} PRIVATE ${script})
endfunction()

# The current common controls, and text at the screen's own resolution.
function(common_manifest target)
  embed_resource(${target} manifest "1 24 \"${QM5R_COMMON_MANIFEST}\"" ${QM5R_COMMON_MANIFEST})
endfunction()

# The clip of the progress window: resource 201 of the type AVI.
function(progress_clip target)
  embed_resource(${target} clip "201 AVI \"${QM5R_PROGRESS_CLIP}\"" ${QM5R_PROGRESS_CLIP})
  add_dependencies(${target} progress_clip_file)
endfunction()
