# Debian packages; `make deps` installs them.

find_path(RAPIDJSON_INCLUDE_DIR rapidjson/reader.h REQUIRED)
add_library(tav_rapidjson INTERFACE)
target_include_directories(tav_rapidjson SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIR})

# libyaml is linked statically so that the plug-in carries it and its
# allocations pass through the plug-in's memory accounting.
find_path(YAML_INCLUDE_DIR yaml.h REQUIRED)
find_library(YAML_STATIC_LIBRARY NAMES libyaml.a REQUIRED)
add_library(tav_yaml INTERFACE)
target_include_directories(tav_yaml SYSTEM INTERFACE ${YAML_INCLUDE_DIR})
target_link_libraries(tav_yaml INTERFACE ${YAML_STATIC_LIBRARY})

find_package(Threads REQUIRED)
