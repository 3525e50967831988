#pragma once

#include "plist/Value.h"

#include <pugixml.hpp>

#include <string_view>

namespace Plist {

/// Parses a whole XML property list. Throws Error.
Value readXML(std::string_view text);

/// The value of one element. depth is the number of containers around it.
Value parse(const pugi::xml_node& element, int depth);

Value parseDictionary(const pugi::xml_node& element, int depth);
Value parseArray(const pugi::xml_node& element, int depth);
Value parseDate(const pugi::xml_node& element);

} // namespace Plist
