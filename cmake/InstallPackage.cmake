# What `cmake --install` leaves behind: libraries, their headers and the package that find_package(ConnectDialog) reads.
#
# Headers go under include/connectdialog with the paths they are included by here. They are file sets, so that the build
# can also prove that each compiles alone: target all_verify_interface_header_sets.
include(CMakePackageConfigHelpers)

set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)
set(connectdialogPackageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/ConnectDialog")

# Installs the library `target` as ConnectDialog::<name>. HEADERS stand below BASE and are included by their path from it.
function(connectdialog_install_library target name)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "BASE" "HEADERS")
    add_library(ConnectDialog::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${arg_BASE}" FILES ${arg_HEADERS})
    install(TARGETS ${target} EXPORT ConnectDialogTargets
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/connectdialog")
endfunction()

# Called once, when all libraries are known.
function(connectdialog_install_package)
    install(EXPORT ConnectDialogTargets NAMESPACE ConnectDialog:: DESTINATION "${connectdialogPackageFolder}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/ConnectDialogConfig.cmake.in"
        "${PROJECT_BINARY_DIR}/ConnectDialogConfig.cmake" INSTALL_DESTINATION "${connectdialogPackageFolder}")
    # Before version 1 a minor version may change the interface.
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/ConnectDialogConfigVersion.cmake"
        COMPATIBILITY SameMinorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/ConnectDialogConfig.cmake"
        "${PROJECT_BINARY_DIR}/ConnectDialogConfigVersion.cmake" DESTINATION "${connectdialogPackageFolder}")
endfunction()
