# talowifi::talowifi        clients, records, enumerations, errors
# talowifi::talowifidaemon  JSON of the records, and the daemon's log level
include(CMakeFindDependencyMacro)
find_dependency(PkgConfig)
pkg_check_modules(JSONCPP QUIET REQUIRED IMPORTED_TARGET jsoncpp)
include("${CMAKE_CURRENT_LIST_DIR}/talowifiTargets.cmake")
