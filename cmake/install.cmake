# What `cmake --install` puts where. Components: runtime (what programs need to run), development (what
# it takes to build them) and tools (the programs). Nothing installed holds the prefix, so it may move.
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/loopwise)
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(runtime_docs ${CMAKE_INSTALL_DATAROOTDIR}/doc/libloopwise${PROJECT_VERSION_MAJOR})
set(development_docs ${CMAKE_INSTALL_DATAROOTDIR}/doc/libloopwise-dev)

install(TARGETS loopwise EXPORT loopwise
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
install(FILES include/libloopwise.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The library depends on nothing, so its list of targets is the whole CMake package.
install(EXPORT loopwise FILE loopwise-config.cmake NAMESPACE loopwise:: DESTINATION ${package_dir}
  COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/loopwise-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/loopwise-config-version.cmake DESTINATION ${package_dir}
  COMPONENT development)

file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
# Packagers may give absolute folders.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_INCLUDEDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE pc_includedir)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE pc_libdir)
configure_file(cmake/loopwise.pc.in loopwise.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/loopwise.pc DESTINATION ${pc_dir} COMPONENT development)

file(ARCHIVE_CREATE OUTPUT ${PROJECT_BINARY_DIR}/changelog.gz PATHS ${PROJECT_SOURCE_DIR}/cmake/changelog
  FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
set(tools_docs ${CMAKE_INSTALL_DATAROOTDIR}/doc/loopwise-tools)
set(documented runtime development)
if(TARGET loopwise_program)
  list(APPEND documented tools)
endif()
foreach(component IN LISTS documented)
  install(FILES LICENSE DESTINATION ${${component}_docs} RENAME copyright COMPONENT ${component})
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${${component}_docs} COMPONENT ${component})
endforeach()

# The program holds what it needs of the library. Its manual pages are made from its help.
if(TARGET loopwise_program)
  install(TARGETS loopwise_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  set(manual ${PROJECT_BINARY_DIR}/manual)
  add_custom_command(OUTPUT ${manual}/loopwise.1.gz
    COMMAND ${PROJECT_SOURCE_DIR}/cmake/manual.sh $<TARGET_FILE:loopwise_program> ${PROJECT_VERSION}
      ${PROJECT_SOURCE_DIR}/cmake/changelog ${manual}
    DEPENDS loopwise_program ${PROJECT_SOURCE_DIR}/cmake/manual.sh ${PROJECT_SOURCE_DIR}/cmake/changelog VERBATIM)
  add_custom_target(loopwise_manual ALL DEPENDS ${manual}/loopwise.1.gz)
  install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/app/completion.bash RENAME loopwise COMPONENT tools
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions)
endif()
