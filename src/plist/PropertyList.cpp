#include "plist/PropertyList.h"

#include "plist/BinaryReader.h"
#include "plist/BinaryWriter.h"
#include "plist/XmlReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <fstream>
#include <istream>
#include <string_view>
#include <utility>

namespace Plist {

namespace {

// A bundle's lists have a few kilobytes.
constexpr off_t maxFileSize = 4 << 20;

class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    ~FileDescriptor() {
        if (isOpen())
            close(m_descriptor);
    }

    bool isOpen() const { return m_descriptor >= 0; }

    int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

// Opening must not wait for the other end of a pipe, so the file is asked what it is only once it is open.
std::vector<char> readPlainFile(const char* fileName) {
    const FileDescriptor file(open(fileName, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen())
        throw Error("Can't open file.");

    struct stat status {};

    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        throw Error("Plist: not a plain file");
    if (status.st_size > maxFileSize)
        throw Error("Plist: file is too large");

    std::vector<char> data(static_cast<std::size_t>(status.st_size));
    std::size_t filled = 0;
    while (filled < data.size()) {
        const ssize_t count = read(file.get(), data.data() + filled, data.size() - filled);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw Error("Can't read file.");
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    data.resize(filled);
    return data;
}

void requireData(const std::vector<char>& data) {
    if (data.empty())
        throw Error("Can't read zero length data");
}

void readWhole(const std::vector<char>& data, Value& out) {
    requireData(data);
    readPlist(data.data(), static_cast<std::int64_t>(data.size()), out);
}

void writeTo(std::ostream& stream, const std::vector<char>& data) {
    stream.write(data.data(), static_cast<std::streamsize>(data.size()));
}

class VectorWriter : public pugi::xml_writer {
public:
    explicit VectorWriter(std::vector<char>& out) : m_out(out) {}

    void write(const void* data, std::size_t size) override {
        const char* bytes = static_cast<const char*>(data);
        m_out.insert(m_out.end(), bytes, bytes + size);
    }

private:
    std::vector<char>& m_out;
};

/// Writes each carriage return as a character reference. An XML parser turns a raw one into a line feed, and
/// pugixml writes it raw; nothing but text can hold one here.
class CarriageReturnEscaper : public pugi::xml_writer {
public:
    explicit CarriageReturnEscaper(pugi::xml_writer& next) : m_next(next) {}

    void write(const void* data, std::size_t size) override {
        std::string_view rest(static_cast<const char*>(data), size);
        for (auto end = rest.find('\r'); end != std::string_view::npos; end = rest.find('\r')) {
            pass(rest.substr(0, end));
            pass("&#13;");
            rest.remove_prefix(end + 1);
        }
        pass(rest);
    }

private:
    void pass(std::string_view bytes) { m_next.write(bytes.data(), bytes.size()); }

    pugi::xml_writer& m_next;
};

void saveXML(pugi::xml_writer& target, const Value& value) {
    pugi::xml_document document;
    writePlistXML(document, value);
    CarriageReturnEscaper writer(target);
    document.save(writer, "\t");
}

} // namespace

void readPlist(const char* data, std::int64_t size, Value& out) {
    if (data == nullptr || size <= 0)
        throw Error("Plist: Empty plist data");
    const std::string_view bytes(data, static_cast<std::size_t>(size));
    out = bytes.starts_with("bplist00") ? BinaryReader(bytes).read() : readXML(bytes);
}

void readPlist(std::istream& stream, Value& out) {
    std::vector<char> data;
    std::array<char, 16384> chunk{};
    do {
        stream.read(chunk.data(), chunk.size());
        data.insert(data.end(), chunk.data(), chunk.data() + stream.gcount());
    } while (stream);
    readWhole(data, out);
}

std::vector<char> readListFile(const char* fileName) {
    std::vector<char> data = readPlainFile(fileName);
    requireData(data);
    return data;
}

void readPlistFile(const char* fileName, Value& out) {
    readWhole(readPlainFile(fileName), out);
}

void writePlistBinary(std::vector<char>& out, const Value& value) {
    out = BinaryWriter().write(value);
}

void writePlistBinary(std::ostream& stream, const Value& value) {
    writeTo(stream, BinaryWriter().write(value));
}

void writePlistBinary(const char* fileName, const Value& value) {
    const std::vector<char> data = BinaryWriter().write(value);
    std::ofstream file(fileName, std::ios::binary | std::ios::trunc);
    writeTo(file, data);
}

void writePlistXML(std::vector<char>& out, const Value& value) {
    std::vector<char> data;
    VectorWriter writer(data);
    saveXML(writer, value);
    out = std::move(data);
}

void writePlistXML(std::ostream& stream, const Value& value) {
    pugi::xml_writer_stream writer(stream);
    saveXML(writer, value);
}

void writePlistXML(const char* fileName, const Value& value) {
    std::vector<char> data;
    writePlistXML(data, value);
    std::ofstream file(fileName, std::ios::binary | std::ios::trunc);
    writeTo(file, data);
}

} // namespace Plist
