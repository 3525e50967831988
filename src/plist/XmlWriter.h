#pragma once

#include "plist/Value.h"

#include <pugixml.hpp>

namespace Plist {

/// Appends value to parent as one element. depth is the number of containers around it. Throws Error for a
/// value of a type that a property list cannot hold, and for text with a null byte, which XML has no way to
/// write.
void writeXMLNode(pugi::xml_node parent, const Value& value, int depth);

void writeXMLDictionary(pugi::xml_node parent, const Dictionary& dictionary, int depth);
void writeXMLArray(pugi::xml_node parent, const Array& array, int depth);

} // namespace Plist
