#include "plist/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Plist {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view whiteSpace = " \t\r\n\v\f";
constexpr std::uint8_t notOfTheAlphabet = 64;

constexpr std::array<std::uint8_t, 256> makeSextets() {
    std::array<std::uint8_t, 256> sextets{};
    sextets.fill(notOfTheAlphabet);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        sextets[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return sextets;
}

constexpr std::array<std::uint8_t, 256> sextets = makeSextets();

} // namespace

std::string base64Encode(const Data& data) {
    std::string text;
    text.reserve((data.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < data.size(); i += 3) {
        const std::size_t length = std::min<std::size_t>(3, data.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (k < length ? static_cast<unsigned char>(data[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= length ? alphabet[group >> (18 - 6 * k) & 0x3FU] : '=';
    }
    return text;
}

Data base64Decode(std::string_view text) {
    Data data;
    data.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    unsigned bitCount = 0;
    for (const char symbol : text) {
        if (symbol == '=')
            break;
        if (whiteSpace.find(symbol) != std::string_view::npos)
            continue;
        const std::uint8_t sextet = sextets[static_cast<unsigned char>(symbol)];
        if (sextet == notOfTheAlphabet)
            throw Error("Plist: data is not base64");
        bits = bits << 6 | sextet;
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            data.push_back(static_cast<char>(bits >> bitCount & 0xFFU));
        }
    }
    if (bitCount == 6)
        throw Error("Plist: data is not base64");
    return data;
}

} // namespace Plist
