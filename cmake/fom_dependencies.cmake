# Third-party libraries, each used by one room of the host and by nothing else.

find_package(Threads REQUIRED)
set(FOM_DEPENDENCIES Threads::Threads)
set(FOM_DEPENDENCY_DEFINITIONS)
if(NOT WIN32)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(LCMS2 REQUIRED IMPORTED_TARGET lcms2)
    pkg_check_modules(PUGIXML REQUIRED IMPORTED_TARGET pugixml)
    find_package(PNG REQUIRED)
    find_package(JPEG REQUIRED)
    list(APPEND FOM_DEPENDENCIES PkgConfig::LCMS2 PkgConfig::PUGIXML PNG::PNG JPEG::JPEG)
    list(APPEND FOM_DEPENDENCY_DEFINITIONS FOM_HAVE_LCMS2 FOM_HAVE_PUGIXML FOM_HAVE_PNG FOM_HAVE_JPEG)
endif()
