#include "plist/XmlWriter.h"

#include "plist/Base64.h"
#include "plist/HeldValue.h"
#include "plist/Limits.h"
#include "plist/PropertyList.h"

#include <array>
#include <charconv>

namespace Plist {

namespace {

constexpr const char* documentType =
    R"(plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd")";

// What std::ostream prints by default, without asking a locale for the decimal sign.
std::string toText(double value) {
    std::array<char, 32> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 6);
    return {text.data(), result.ptr};
}

void appendElement(pugi::xml_node parent, const char* name, const std::string& text) {
    if (text.find('\0') != std::string::npos)
        throw Error("Plist Error: Can't write a null byte as XML");
    // Parsers drop text of blanks alone, but not where it is marked as character data. A carriage return
    // needs no such mark, and could not be written in it: it becomes a character reference.
    const bool isBlank = !text.empty() && text.find_first_not_of(" \t\n") == std::string::npos;
    const pugi::xml_node_type type = isBlank ? pugi::node_cdata : pugi::node_pcdata;
    parent.append_child(name).append_child(type).set_value(text.c_str());
}

class ElementWriter {
public:
    ElementWriter(pugi::xml_node parent, int depth) : m_parent(parent), m_depth(depth) {}

    void operator()(const Dictionary& value) { writeXMLDictionary(m_parent, value, m_depth); }

    void operator()(const Array& value) { writeXMLArray(m_parent, value, m_depth); }

    void operator()(const std::string& value) { appendElement(m_parent, "string", value); }

    void operator()(std::int64_t value) { appendElement(m_parent, "integer", std::to_string(value)); }

    void operator()(double value) { appendElement(m_parent, "real", toText(value)); }

    void operator()(bool value) { m_parent.append_child(value ? "true" : "false"); }

    void operator()(const Date& value) { appendElement(m_parent, "date", value.timeAsXMLConvention()); }

    void operator()(const Data& value) { appendElement(m_parent, "data", base64Encode(value)); }

private:
    pugi::xml_node m_parent;
    int m_depth;
};

} // namespace

void writeXMLNode(pugi::xml_node parent, const Value& value, int depth) {
    visitHeldValue(value, ElementWriter(parent, depth));
}

void writeXMLDictionary(pugi::xml_node parent, const Dictionary& dictionary, int depth) {
    checkDepth(depth);
    pugi::xml_node element = parent.append_child("dict");
    for (const auto& [key, value] : dictionary) {
        appendElement(element, "key", key);
        writeXMLNode(element, value, depth + 1);
    }
}

void writeXMLArray(pugi::xml_node parent, const Array& array, int depth) {
    checkDepth(depth);
    pugi::xml_node element = parent.append_child("array");
    for (const Value& value : array)
        writeXMLNode(element, value, depth + 1);
}

void writePlistXML(pugi::xml_document& document, const Value& value) {
    document.reset();
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    document.append_child(pugi::node_doctype).set_value(documentType);
    pugi::xml_node root = document.append_child("plist");
    root.append_attribute("version") = "1.0";
    writeXMLNode(root, value, 0);
}

} // namespace Plist
