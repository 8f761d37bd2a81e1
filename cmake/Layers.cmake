# The libraries form layers: each one sees only its own headers and those of the libraries it
# links, and links only libraries of the layers below its own. The core below the front ends
# never sees Qt.
#
#   quillon_export_headers(<target> [HEADERS <file>...] [EXCLUDE <file>...])
# gives <target> an include root of its own in the build tree and exports only that root. It
# holds one forwarding header per header of the target (default: every *.h of the current source
# folder), under the folder's path below src/, so sources keep writing "link/transfer.h".
# Forwarding headers rather than links: they work on every host and build tool and never go
# stale when a header changes. Two libraries may share a folder, each exporting its own headers.
#
#   quillon_check_layers(LAYERS <layer>... CORE <target>...)
# stops the configuration when a library links a library of its own layer or one above, or when
# a core library links Qt. A <layer> is a space-separated list of targets, bottom layer first;
# targets the build does not define are skipped. With the tests, it adds layers.core_without_qt,
# which fails when a file in a folder of the core includes a Qt header.

set(QUILLON_INCLUDE_ROOTS ${PROJECT_BINARY_DIR}/include)
set(QUILLON_CORE_WITHOUT_QT_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/CoreWithoutQt.cmake)

function(quillon_export_headers target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;EXCLUDE")
  set(headers ${arg_HEADERS})
  if(NOT headers)
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}
         ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  endif()
  if(arg_EXCLUDE)
    list(REMOVE_ITEM headers ${arg_EXCLUDE})
  endif()
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  set(root ${QUILLON_INCLUDE_ROOTS}/${target})

  set(forwarders)
  foreach(header IN LISTS headers)
    if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${header})
      message(FATAL_ERROR "${target} exports ${header}, which is not in ${folder}")
    endif()
    set(forwarder ${root}/${folder}/${header})
    list(APPEND forwarders ${forwarder})
    set(content "#include \"${CMAKE_CURRENT_SOURCE_DIR}/${header}\"\n")
    set(old "")
    if(EXISTS ${forwarder})
      file(READ ${forwarder} old)
    endif()
    # Rewritten only when it changes, so a new configuration does not rebuild everything.
    if(NOT old STREQUAL content)
      file(WRITE ${forwarder} "${content}")
    endif()
  endforeach()
  # A header that left the library must not stay visible through an old forwarder.
  file(GLOB_RECURSE present LIST_DIRECTORIES false ${root}/*)
  foreach(file IN LISTS present)
    if(NOT file IN_LIST forwarders)
      file(REMOVE ${file})
    endif()
  endforeach()

  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE ${root})
  elseif(type STREQUAL "EXECUTABLE")
    target_include_directories(${target} PRIVATE ${root})
  else()
    target_include_directories(${target} PUBLIC ${root})
  endif()
endfunction()

# The libraries `target` links, as written, without generator expressions around them.
function(quillon_linked_libraries target out)
  set(linked)
  foreach(property LINK_LIBRARIES INTERFACE_LINK_LIBRARIES)
    get_target_property(items ${target} ${property})
    if(items)
      foreach(item IN LISTS items)
        string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" item "${item}")
        list(APPEND linked ${item})
      endforeach()
    endif()
  endforeach()
  list(REMOVE_DUPLICATES linked)
  set(${out} ${linked} PARENT_SCOPE)
endfunction()

function(quillon_check_layers)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "LAYERS;CORE")
  set(level 0)
  foreach(layer IN LISTS arg_LAYERS)
    separate_arguments(targets UNIX_COMMAND "${layer}")
    foreach(target IN LISTS targets)
      set(level_of_${target} ${level})
    endforeach()
    math(EXPR level "${level} + 1")
  endforeach()

  foreach(layer IN LISTS arg_LAYERS)
    separate_arguments(targets UNIX_COMMAND "${layer}")
    foreach(target IN LISTS targets)
      if(NOT TARGET ${target})
        continue()
      endif()
      quillon_linked_libraries(${target} linked)
      foreach(library IN LISTS linked)
        if(library MATCHES "^quillon_" AND NOT library STREQUAL "quillon_warnings"
           AND NOT DEFINED level_of_${library})
          message(FATAL_ERROR "${target} links ${library}, which has no layer (src/CMakeLists.txt)")
        endif()
        if(DEFINED level_of_${library} AND NOT level_of_${library} LESS level_of_${target})
          message(FATAL_ERROR
            "${target} links ${library}, which is not in a layer below it (src/CMakeLists.txt)")
        endif()
        if(target IN_LIST arg_CORE AND library MATCHES "^Qt[0-9]*::")
          message(FATAL_ERROR "${target} belongs to the core, which is built without Qt, "
                              "but links ${library}")
        endif()
      endforeach()
    endforeach()
  endforeach()

  # The folders of the core, for the test that no header or source of theirs includes Qt.
  set(core_folders)
  foreach(target IN LISTS arg_CORE)
    if(TARGET ${target})
      get_target_property(folder ${target} SOURCE_DIR)
      list(APPEND core_folders ${folder})
    endif()
  endforeach()
  list(REMOVE_DUPLICATES core_folders)
  if(QUILLON_TESTS)
    add_test(NAME layers.core_without_qt
      COMMAND ${CMAKE_COMMAND} "-DFOLDERS=${core_folders}" -P ${QUILLON_CORE_WITHOUT_QT_SCRIPT})
  endif()
endfunction()
