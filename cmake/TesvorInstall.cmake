# Install rules and the CMake package: find_package(TesvorUtil CONFIG) gives the
# target TesvorUtil::TesvorUtil, which brings afxlite and Corvel with it.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS TesvorUtil afxlite Corvel EXPORT TesvorUtilTargets
        RUNTIME DESTINATION bin LIBRARY DESTINATION lib ARCHIVE DESTINATION lib
        INCLUDES DESTINATION include)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/include/ DESTINATION include FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${CMAKE_SOURCE_DIR}/framework/include/ DESTINATION include/afxlite FILES_MATCHING PATTERN "*.h")
install(FILES ${CMAKE_SOURCE_DIR}/corvel/Corvel.h DESTINATION include/corvel)
install(FILES ${TESVOR_RUNTIME_DLLS} DESTINATION bin)
if(TARGET tesvorutil)
  install(TARGETS tesvorutil RUNTIME DESTINATION bin)
endif()

install(EXPORT TesvorUtilTargets NAMESPACE TesvorUtil:: DESTINATION lib/cmake/TesvorUtil)
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/TesvorUtilConfig.cmake.in
  ${CMAKE_BINARY_DIR}/TesvorUtilConfig.cmake INSTALL_DESTINATION lib/cmake/TesvorUtil)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TesvorUtilConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/TesvorUtilConfig.cmake ${CMAKE_BINARY_DIR}/TesvorUtilConfigVersion.cmake
        DESTINATION lib/cmake/TesvorUtil)
