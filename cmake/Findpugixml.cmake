# The target `pugixml::pugixml`. Debian's own configuration names the shared library.
include(FindArchive)
find_archive(pugixml pugixml::pugixml pugixml.hpp pugixml)
