#pragma once

#include "plist/Date.h"

#include <any>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

/// Property lists: a tree of dynamically typed values, read from and written to its binary and its XML form.
///
/// A value holds one of: Dictionary, Array, std::string (UTF-8), std::int64_t, double, bool, Date, Data.
/// Readers make exactly these. Writers also take the other signed integers of 16 to 64 bits, and float.
namespace Plist {

using Value = std::any;
using Dictionary = std::map<std::string, Value>;
using Array = std::vector<Value>;
using Data = std::vector<char>;

/// Every failure to read or write a property list, with a message for the log.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace Plist
