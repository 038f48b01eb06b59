# corvane_copy_application(source folder variable)
#
# Copies the files of an application from the source folder, with the schema of definition files, to the folder of the
# build. The variable becomes the list of what a target depends on for that. What an earlier build has copied and the
# source folder no longer has is removed: an application would go on using it.
function(corvane_copy_application source folder variable)
  file(GLOB_RECURSE files RELATIVE ${source} CONFIGURE_DEPENDS ${source}/*)
  list(FILTER files EXCLUDE REGEX "__pycache__")
  get_filename_component(name ${folder} NAME)
  set(copied ${CMAKE_CURRENT_BINARY_DIR}/${name}.copied)
  if(EXISTS ${copied})
    file(STRINGS ${copied} gone ENCODING UTF-8)
    list(REMOVE_ITEM gone ${files})
    list(TRANSFORM gone PREPEND ${folder}/)
    foreach(file IN LISTS gone)
      file(REMOVE ${file})
    endforeach()
  endif()
  list(JOIN files "\n" lines)
  file(WRITE ${copied} "${lines}\n")

  set(schema ${CMAKE_SOURCE_DIR}/packaging/schema/Service.xdr)
  set(copies ${folder}/Services/Service.xdr)
  add_custom_command(OUTPUT ${copies} COMMAND ${CMAKE_COMMAND} -E copy ${schema} ${copies} DEPENDS ${schema})
  foreach(file IN LISTS files)
    add_custom_command(
      OUTPUT ${folder}/${file}
      COMMAND ${CMAKE_COMMAND} -E copy ${source}/${file} ${folder}/${file}
      DEPENDS ${source}/${file})
    list(APPEND copies ${folder}/${file})
  endforeach()
  set(${variable} ${copies} PARENT_SCOPE)
endfunction()
