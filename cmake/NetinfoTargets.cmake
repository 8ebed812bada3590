# One function for each kind of target: warnings, visibility, output folders and toolkit rules are decided here, so that
# a room's own build file is a list of sources.
include_guard()
include(GNUInstallDirs)

set(NETINFO_QT 6 CACHE STRING "Generation of the Qt toolkit: 6, 5 or 4 (4 builds the plug-in library alone)")
set_property(CACHE NETINFO_QT PROPERTY STRINGS 6 5 4)
option(NETINFO_SANITIZE "Build everything with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)

# Everything that is run together lies together, as in an installation: programs in bin, libraries in lib, plug-ins in
# lib/netinfo/plugins, language files in share/netinfo/languages.
set(NETINFO_BIN_DIR ${CMAKE_BINARY_DIR}/bin)
set(NETINFO_LIB_DIR ${CMAKE_BINARY_DIR}/lib)
set(NETINFO_PLUGIN_DIR ${CMAKE_BINARY_DIR}/lib/netinfo/plugins)
set(NETINFO_LANGUAGE_DIR ${CMAKE_BINARY_DIR}/share/netinfo/languages)
set(NETINFO_PLUGIN_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/netinfo/plugins)
set(NETINFO_LANGUAGE_INSTALL_DIR ${CMAKE_INSTALL_DATADIR}/netinfo/languages)

if(NETINFO_QT EQUAL 4)
    find_package(Qt4 4.6 REQUIRED COMPONENTS QtCore QtGui)
    set(NETINFO_QT_WIDGETS Qt4::QtGui)
else()
    find_package(Qt${NETINFO_QT} REQUIRED COMPONENTS Core Gui Widgets DBus Test LinguistTools)
    set(NETINFO_QT_WIDGETS Qt::Widgets)
endif()

add_library(netinfo_options INTERFACE)
target_compile_options(netinfo_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
target_compile_definitions(netinfo_options INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_STRICT_ITERATORS QT_MESSAGELOGCONTEXT
    NETINFO_VERSION="${PROJECT_VERSION}")
if(NETINFO_SANITIZE)
    target_compile_options(netinfo_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(netinfo_options INTERFACE -fsanitize=address,undefined)
elseif(NOT NETINFO_QT EQUAL 4) # with 4 the host that loads the plug-in supplies its symbols
    target_link_options(netinfo_options INTERFACE -Wl,--no-undefined)
endif()

# What a user runs, without tests and benchmarks.
add_custom_target(application)

# The contract's headers; nothing to build.
add_library(netinfo_contract INTERFACE)
target_include_directories(netinfo_contract INTERFACE ${PROJECT_SOURCE_DIR}/include)

# netinfo_library(NAME SOURCES...): a shared library of the host.
function(netinfo_library name)
    add_library(${name} SHARED ${ARGN})
    target_link_libraries(${name} PRIVATE netinfo_options PUBLIC netinfo_contract)
    set_target_properties(${name} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${NETINFO_LIB_DIR}
        VERSION ${PROJECT_VERSION} SOVERSION 0
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_SKIP)
    add_dependencies(application ${name})
endfunction()

# netinfo_plugin(NAME SOURCES...): a plug-in that the host loads at run time. It is a shared library rather than a
# module, since another plug-in may link what it exports.
function(netinfo_plugin name)
    add_library(${name} SHARED ${ARGN})
    target_link_libraries(${name} PRIVATE netinfo_options PUBLIC netinfo_contract ${NETINFO_QT_WIDGETS})
    set_target_properties(${name} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${NETINFO_PLUGIN_DIR}
        INSTALL_RPATH "$ORIGIN:$ORIGIN/../..")
    install(TARGETS ${name} LIBRARY DESTINATION ${NETINFO_PLUGIN_INSTALL_DIR})
    add_dependencies(application ${name})
endfunction()

# netinfo_program(NAME SOURCES...): a program that is installed.
function(netinfo_program name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE netinfo_options netinfo_contract)
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${NETINFO_BIN_DIR}
        INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    add_dependencies(application ${name})
endfunction()

# netinfo_test(NAME SOURCES... [LIBRARIES ...]): a QtTest program, run by CTest off screen in UTC with a home of its own.
# The folder names of the build reach it as environment variables (see tests/CMakeLists.txt).
function(netinfo_test name)
    cmake_parse_arguments(arg "" "" "LIBRARIES" ${ARGN})
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE netinfo_options netinfo_contract ${arg_LIBRARIES} Qt::Test)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/bin)
    add_test(NAME ${name} COMMAND ${name})
    netinfo_test_environment(${name})
endfunction()

# netinfo_test_environment(NAME): the surroundings of a CTest test, whatever program it runs.
function(netinfo_test_environment name)
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 300
        ENVIRONMENT "${NETINFO_TEST_ENVIRONMENT};XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/tests/home/${name}/config;XDG_DATA_HOME=${CMAKE_BINARY_DIR}/tests/home/${name}/data;XDG_RUNTIME_DIR=${CMAKE_BINARY_DIR}/tests/home/${name}/run")
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/tests/home/${name}/run)
    file(CHMOD ${CMAKE_BINARY_DIR}/tests/home/${name}/run
        DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endfunction()

set(NETINFO_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen" "TZ=UTC" "LC_ALL=C.UTF-8"
    "NETINFO_BIN_DIR=${NETINFO_BIN_DIR}" "NETINFO_LIB_DIR=${NETINFO_LIB_DIR}"
    "NETINFO_PLUGIN_DIR=${NETINFO_PLUGIN_DIR}" "NETINFO_LANGUAGE_DIR=${NETINFO_LANGUAGE_DIR}"
    "NETINFO_SOURCE_DIR=${PROJECT_SOURCE_DIR}" "NETINFO_BUILD_DIR=${CMAKE_BINARY_DIR}"
    "ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=1" "UBSAN_OPTIONS=print_stacktrace=1")
