#include "plist/XmlReader.h"

#include "plist/Base64.h"
#include "plist/Limits.h"

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <locale> // where macOS has strtod_l
#include <string>

namespace Plist {

namespace {

std::int64_t toInteger(const char* text) {
    return std::strtoll(text, nullptr, 10);
}

// std::strtod would look for the decimal sign of the user's locale.
double toReal(const char* text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, nullptr, cLocale);
}

} // namespace

Value readXML(std::string_view text) {
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size());
    if (!result)
        throw Error(std::string("Plist: XML parsed with error ") + result.description());
    return parse(document.child("plist").first_child(), 0);
}

Value parse(const pugi::xml_node& element, int depth) {
    const std::string_view name = element.name();
    if (name == "dict")
        return parseDictionary(element, depth);
    if (name == "array")
        return parseArray(element, depth);
    if (name == "string")
        return std::string(element.child_value());
    if (name == "integer")
        return toInteger(element.child_value());
    if (name == "real")
        return toReal(element.child_value());
    if (name == "true")
        return true;
    if (name == "false")
        return false;
    if (name == "date")
        return parseDate(element);
    if (name == "data")
        return base64Decode(element.child_value());
    throw Error("Plist: XML unknown node type " + std::string(name));
}

Value parseDictionary(const pugi::xml_node& element, int depth) {
    checkDepth(depth);
    const auto isKey = [](const pugi::xml_node& node) {
        return std::string_view(node.name()) == "key";
    };

    Dictionary dictionary;
    for (pugi::xml_node node = element.first_child(); node; node = node.next_sibling()) {
        if (!isKey(node))
            throw Error("Plist: XML dictionary key expected but not found");
        std::string key = node.child_value();
        node = node.next_sibling();
        if (!node)
            throw Error("Plist: XML dictionary value expected for key " + key + "but not found");
        if (isKey(node))
            throw Error("Plist: XML dictionary value expected for key " + key + "but found another key node");
        dictionary.insert_or_assign(std::move(key), parse(node, depth + 1));
    }
    return dictionary;
}

Value parseArray(const pugi::xml_node& element, int depth) {
    checkDepth(depth);
    Array array;
    array.reserve(static_cast<std::size_t>(std::distance(element.begin(), element.end())));
    for (const pugi::xml_node& child : element)
        array.push_back(parse(child, depth + 1));
    return array;
}

Value parseDate(const pugi::xml_node& element) {
    Date date;
    date.setTimeFromXMLConvention(element.child_value());
    return date;
}

} // namespace Plist
