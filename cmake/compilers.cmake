# Older compilers would fail in the midst of the sources. The g++ and clang++ named here are those that are tested.
foreach(supported IN ITEMS "GNU;g++;11" "Clang;clang++;14")
  list(GET supported 0 id)
  list(GET supported 1 name)
  list(GET supported 2 oldest)
  if(CMAKE_CXX_COMPILER_ID STREQUAL id AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS oldest)
    message(FATAL_ERROR
      "${name} ${CMAKE_CXX_COMPILER_VERSION} is too old: g++ 11 or later or clang++ 14 or later is needed.")
  endif()
endforeach()
