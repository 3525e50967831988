#pragma once

#include "plist/Value.h"

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <utility>
#include <vector>

namespace pugi {
class xml_document;
}

/// Reading and writing of whole property lists. All functions may be called from any thread; none keeps
/// state.
namespace Plist {

/// Parses size bytes, binary if they start with "bplist00" and XML otherwise. Throws Error; out is unchanged
/// then. The cost is bounded by the size of the data, whatever the data says of itself.
void readPlist(const char* data, std::int64_t size, Value& out);

void readPlist(std::istream& stream, Value& out);

/// The bytes of a plain file of at most 4 MiB, for readPlist. Anything else in its place (a pipe, a device, a
/// folder) is refused at once with an Error, as is an empty file.
std::vector<char> readListFile(const char* fileName);

/// Reads a file that readListFile takes.
void readPlistFile(const char* fileName, Value& out);

/// As readPlistFile. A root of another type than T throws std::bad_any_cast, a std::bad_cast. No root is a
/// Value itself: whoever takes any root calls readPlistFile.
template <typename T>

requires(!std::same_as<T, Value>) void readPlist(const char* fileName, T& out) {
    Value root;
    readPlistFile(fileName, root);
    out = std::any_cast<T>(std::move(root));
}

/// Throw Error for an empty value and for one of a type that a property list cannot hold.
void writePlistBinary(std::vector<char>& out, const Value& value);
void writePlistBinary(std::ostream& stream, const Value& value);

/// Truncates the file. A file that cannot be opened is passed over in silence: callers rely on it.
void writePlistBinary(const char* fileName, const Value& value);

/// The document is for the other three to save, which write a carriage return so that it is read back.
void writePlistXML(pugi::xml_document& document, const Value& value);
void writePlistXML(std::vector<char>& out, const Value& value);
void writePlistXML(std::ostream& stream, const Value& value);
void writePlistXML(const char* fileName, const Value& value);

} // namespace Plist
