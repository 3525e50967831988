#include "platform/linux/MountPoints.h"

#include <fstream>
#include <sstream>

namespace Stemhaven {

namespace {

/// Blanks and the like stand as "\" and three octal digits.
std::string unescaped(const std::string& field) {
    constexpr std::size_t digits = 3;
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && field.find_first_not_of("01234567", i + 1) > i + digits &&
            i + digits < field.size()) {
            text += static_cast<char>(std::stoi(field.substr(i + 1, digits), nullptr, 8));
            i += digits;
        } else {
            text += field[i];
        }
    }
    return text;
}

} // namespace

std::set<std::string> currentMountPoints() {
    std::set<std::string> points;
    std::ifstream table("/proc/self/mountinfo");
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        std::string mount;
        std::string ignored;
        std::string point;
        fields >> mount >> ignored >> ignored >> ignored >> point;
        points.insert(unescaped(point) + '\n' + mount);
    }
    return points;
}

} // namespace Stemhaven
