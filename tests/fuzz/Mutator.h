#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// Makes broken inputs out of whole ones, the same ones in each run: a few changes in one of the inputs, with
/// a taste for the numbers at the edges and for the words of the formats.
class Mutator {
public:
    /// There is at least one input.
    Mutator(std::vector<std::string> inputs, std::vector<std::string> tokens)
        : m_inputs(std::move(inputs)),
          m_tokens(std::move(tokens)) {}

    std::string next() {
        std::string bytes = m_inputs[below(m_inputs.size())];
        for (std::size_t changes = 1 + below(4); changes > 0; --changes)
            change(bytes);
        constexpr std::size_t largest = 8192;
        bytes.resize(std::min(bytes.size(), largest));
        return bytes;
    }

private:
    /// Not by a distribution of the standard library, which may differ from one to the next.
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }

    void change(std::string& bytes) {
        const std::size_t at = below(bytes.size());
        switch (below(8)) {
        case 0:
            replace(bytes, at, 1, std::string(1, static_cast<char>(byteAt(bytes, at) ^ (1U << below(8)))));
            break;
        case 1:
            replace(bytes, at, 1, std::string(1, static_cast<char>(m_random())));
            break;
        case 2:
            overwriteWithNumber(bytes, at);
            break;
        case 3:
            bytes.resize(at);
            break;
        case 4:
            bytes.erase(at, 1 + below(40));
            break;
        case 5: // Some of the bytes once more.
            bytes.insert(at, bytes.substr(below(bytes.size()), 1 + below(40)));
            break;
        case 6: {
            const std::string token = m_tokens.empty() ? std::string() : m_tokens[below(m_tokens.size())];
            replace(bytes, at, below(2) * token.size(), token);
            break;
        }
        default: {
            const std::string& other = m_inputs[below(m_inputs.size())];
            replace(bytes, at, bytes.size(), other.substr(below(other.size())));
        }
        }
    }

    /// A length, an offset or a count, as the formats have them: the highest byte first.
    void overwriteWithNumber(std::string& bytes, std::size_t at) {
        static constexpr std::uint64_t numbers[] = {
            0,
            1,
            2,
            0x7F,
            0x80,
            0xFF,
            0x100,
            0x7FFF,
            0x8000,
            0xFFFF,
            0x7FFFFFFF,
            0x80000000,
            0xFFFFFFFF,
            0x7FFFFFFFFFFFFFFF,
            0x8000000000000000,
            0xFFFFFFFFFFFFFFFF};
        const std::uint64_t number = numbers[below(std::size(numbers))];
        const std::size_t size = std::size_t{1} << below(4);
        std::string field;
        for (std::size_t i = size; i-- > 0;)
            field += static_cast<char>(number >> (8 * i));
        replace(bytes, at, size, field);
    }

    static unsigned byteAt(const std::string& bytes, std::size_t at) {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
    }

    static void replace(std::string& bytes, std::size_t at, std::size_t count, const std::string& by) {
        bytes.replace(at, count, by);
    }

    std::vector<std::string> m_inputs;
    std::vector<std::string> m_tokens;
    std::mt19937 m_random;
};
