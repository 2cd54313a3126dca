# Debian packages; `make deps` installs them. The Windows and 32-bit builds
# build libyaml and GoogleTest from their sources for their own target
# (TAV_LIBYAML_SOURCE_DIR, TAV_GTEST_SOURCE_DIR; `make deps-targets` and the
# Makefile's libyaml source fetch provide them).
set(TAV_LIBYAML_SOURCE_DIR "" CACHE PATH "libyaml's sources, built here instead of linking the system's libyaml.a")
set(TAV_GTEST_SOURCE_DIR "" CACHE PATH "GoogleTest's sources, built here instead of using the system's libraries")

find_path(RAPIDJSON_INCLUDE_DIR rapidjson/reader.h REQUIRED NO_CMAKE_FIND_ROOT_PATH)
add_library(tav_rapidjson INTERFACE)
if(CMAKE_CROSSCOMPILING)
    # The machine's rapidjson headers alone, without the machine's other headers beside them.
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/rapidjson)
    file(CREATE_LINK ${RAPIDJSON_INCLUDE_DIR}/rapidjson ${CMAKE_BINARY_DIR}/rapidjson/rapidjson SYMBOLIC)
    target_include_directories(tav_rapidjson SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/rapidjson)
else()
    target_include_directories(tav_rapidjson SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIR})
endif()

# libyaml is linked statically so that the plug-in carries it and its
# allocations pass through the plug-in's memory accounting.
add_library(tav_yaml INTERFACE)
if(TAV_LIBYAML_SOURCE_DIR)
    # Its own build files, without its tests.
    set(BUILD_TESTING OFF CACHE BOOL "Build the tests of libyaml's sources")
    add_subdirectory(${TAV_LIBYAML_SOURCE_DIR} ${CMAKE_BINARY_DIR}/libyaml EXCLUDE_FROM_ALL)
    set_target_properties(yaml PROPERTIES POSITION_INDEPENDENT_CODE ON)
    target_compile_options(yaml PRIVATE -w)
    target_link_libraries(tav_yaml INTERFACE yaml)
else()
    find_path(YAML_INCLUDE_DIR yaml.h REQUIRED)
    find_library(YAML_STATIC_LIBRARY NAMES libyaml.a REQUIRED)
    target_include_directories(tav_yaml SYSTEM INTERFACE ${YAML_INCLUDE_DIR})
    target_link_libraries(tav_yaml INTERFACE ${YAML_STATIC_LIBRARY})
endif()

find_package(Threads REQUIRED)

if(TAV_TESTS AND TAV_GTEST_SOURCE_DIR)
    set(INSTALL_GTEST OFF CACHE BOOL "Install GoogleTest built from its sources")
    add_subdirectory(${TAV_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    # Its build names them GTest::gtest, GTest::gmock and so on, as the system's package does.
    foreach(library gtest gtest_main gmock gmock_main)
        target_compile_options(${library} PRIVATE -w)
    endforeach()
endif()
