# The target `yaml-cpp`. Debian's own configuration names the shared library.
include(FindArchive)
find_archive(yaml-cpp yaml-cpp yaml-cpp/yaml.h yaml-cpp)
