# Run by ctest (layers.core_without_qt): fails when a source or header of the core includes a Qt
# header, even one that this build does not compile (another system's file, a disabled branch).
#   cmake -DFOLDERS=<folder>;... -P CoreWithoutQt.cmake
set(found "")
foreach(folder IN LISTS FOLDERS)
  file(GLOB files ${folder}/*.h ${folder}/*.cpp)
  foreach(file IN LISTS files)
    file(STRINGS ${file} lines REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"](Q|qt)")
    foreach(line IN LISTS lines)
      string(APPEND found "\n  ${file}: ${line}")
    endforeach()
  endforeach()
endforeach()
if(found)
  message(FATAL_ERROR "The core includes Qt:${found}")
endif()
