# The installed package: headers, the shared library and what find_package(fom) needs.

include(CMakePackageConfigHelpers)
install(TARGETS fom EXPORT fomTargets)
install(DIRECTORY include/fom DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY host/include/host DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT fomTargets NAMESPACE fom:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/fom)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/fomConfig.cmake
    "include(\"\${CMAKE_CURRENT_LIST_DIR}/fomTargets.cmake\")\n")
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/fomConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/fomConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/fomConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/fom)
if(TARGET fom_command)
    install(TARGETS fom_command)
endif()
