# corvane_add_application(NAME FOLDER source)
#
# Makes the target NAME: the application folder NAME of the build, with links to all files of the source folder
# (Services, Images and what else there is) and a copy of the schema of definition files. As the files are linked, what
# is saved in the source folder is in the application at once; a new file joins with the next build. The folder's path is
# the target's property CORVANE_FOLDER.
function(corvane_add_application name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER" "")
  if(NOT arg_FOLDER)
    message(FATAL_ERROR "corvane_add_application(${name}): name the folder of its files as FOLDER")
  endif()
  get_filename_component(source ${arg_FOLDER} ABSOLUTE)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${name})
  file(GLOB_RECURSE files RELATIVE ${source} CONFIGURE_DEPENDS ${source}/*)
  _corvane_remove_dead_links(${folder} ${source})
  set(parts)
  foreach(file IN LISTS files)
    get_filename_component(below ${folder}/${file} DIRECTORY)
    add_custom_command(OUTPUT ${folder}/${file} DEPENDS ${source}/${file}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${below}
      COMMAND ${CMAKE_COMMAND} -E create_symlink ${source}/${file} ${folder}/${file} VERBATIM)
    list(APPEND parts ${folder}/${file})
  endforeach()
  if(NOT "Services/Service.xdr" IN_LIST files)
    add_custom_command(OUTPUT ${folder}/Services/Service.xdr DEPENDS ${Corvane_SCHEMA}
      COMMAND ${CMAKE_COMMAND} -E copy ${Corvane_SCHEMA} ${folder}/Services/Service.xdr VERBATIM)
    list(APPEND parts ${folder}/Services/Service.xdr)
  endif()
  add_custom_target(${name} ALL DEPENDS ${parts})
  set_target_properties(${name} PROPERTIES CORVANE_FOLDER ${folder})
endfunction()

# What an earlier build linked to and the source folder no longer has.
function(_corvane_remove_dead_links folder source)
  file(GLOB_RECURSE links ${folder}/*)
  foreach(link IN LISTS links)
    if(IS_SYMLINK ${link} AND NOT EXISTS ${link})
      file(READ_SYMLINK ${link} target)
      cmake_path(IS_PREFIX source ${target} NORMALIZE below)
      if(below)
        file(REMOVE ${link})
      endif()
    endif()
  endforeach()
endfunction()

# corvane_add_service(LIBRARY APPLICATION name SOURCES source... [WIDGETS])
#
# Builds the plug-in LIBRARY, the part of a ProgID in front of the point, into the folder plugins of the application.
# With WIDGETS it may have pages that are Qt widgets; find Corvane with the component Desktop then. Libraries that it needs
# itself are found beside it, also when the application's folder is copied elsewhere.
function(corvane_add_service library)
  cmake_parse_arguments(PARSE_ARGV 1 arg "WIDGETS" "APPLICATION" "SOURCES")
  if(NOT TARGET "${arg_APPLICATION}")
    message(FATAL_ERROR "corvane_add_service(${library}): APPLICATION isn't one of corvane_add_application()")
  endif()
  get_target_property(folder ${arg_APPLICATION} CORVANE_FOLDER)
  add_library(${library} MODULE ${arg_SOURCES})
  target_link_libraries(${library} PRIVATE Corvane::Core $<$<BOOL:${arg_WIDGETS}>:Corvane::Desktop>)
  set_target_properties(${library} PROPERTIES PREFIX lib CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY ${folder}/plugins BUILD_RPATH "$ORIGIN" INSTALL_RPATH "$ORIGIN")
  add_dependencies(${arg_APPLICATION} ${library})
endfunction()
