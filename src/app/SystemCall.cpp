#include "app/SystemCall.h"

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace Stemhaven {

namespace {

struct ClosePipe {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

} // namespace

std::string system_call(const char* command) {
    // The program's own users quote what they put into a command; running a shell is this function's purpose.
    const std::unique_ptr<std::FILE, ClosePipe> pipe(popen(command, "r"));
    if (!pipe)
        throw std::runtime_error("popen() failed!");

    std::string output;
    std::array<char, 128> piece = {};
    while (std::fgets(piece.data(), static_cast<int>(piece.size()), pipe.get()) != nullptr)
        output += piece.data();
    return output;
}

QString systemCall(const QString& command) {
    return QString::fromStdString(system_call(command.toUtf8().constData()));
}

} // namespace Stemhaven
