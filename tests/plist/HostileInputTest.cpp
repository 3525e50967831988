#include "ListBytes.h"

#include <gtest/gtest.h>

namespace {

const std::string outOfBounds = "Out of bounds getRange";

ListBytes one(const std::string& object) {
    return {.objects = {object}};
}

// count arrays around a true, each of which holds the next one so many times.
std::string nestedBinary(unsigned count, unsigned times = 1) {
    ListBytes list{.offsetSize = 2, .referenceSize = 2};
    for (unsigned i = 1; i <= count; ++i) {
        list.objects.push_back(bigEndian(0xA0 + times, 1));
        for (unsigned k = 0; k < times; ++k)
            list.objects.back() += bigEndian(i, 2);
    }
    list.objects.push_back("\x09");
    return list.bytes();
}

std::string nestedXml(std::size_t count) {
    std::string begin;
    std::string end;
    for (std::size_t i = 0; i < count; ++i) {
        begin += "<array>";
        end += "</array>";
    }
    return "<plist>" + begin + "<true/>" + end + "</plist>";
}

// An array of count references to one object, which may refer to itself no further.
std::string oftenShared(std::uint64_t count, const std::string& object) {
    ListBytes list{.offsetSize = 4};
    list.objects = {"\xAF\x12" + bigEndian(count, 4) + std::string(count, '\x01'), object};
    return list.bytes();
}

std::string text(std::size_t length) {
    return "\x5F\x12" + bigEndian(length, 4) + std::string(length, 'x');
}

// One dictionary of 200 entries with the same value, often.
std::string dictionaryOftenShared(std::uint64_t count) {
    constexpr unsigned keys = 200;
    std::string dictionary = "\xDF\x10" + bigEndian(keys, 1);
    ListBytes list{.objects = {"", ""}, .offsetSize = 4};
    for (unsigned i = 0; i < keys; ++i) {
        list.objects.push_back("\x51" + bigEndian(i, 1));
        dictionary += bigEndian(i + 2, 1);
    }
    list.objects.push_back("\x09");
    list.objects[0] = "\xAF\x12" + bigEndian(count, 4) + std::string(count, '\x01');
    list.objects[1] = dictionary + std::string(keys, static_cast<char>(keys + 2));
    return list.bytes();
}

TEST(HostileInput, BinaryListsAreRefused) {
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"32 bytes", "bplist00" + bigEndian(0, 24), outOfBounds},
        {"trailer alone", "bplist00" + bigEndian(0, 32), ""},
        {"no objects", ListBytes{}.bytes(), outOfBounds},
        {"offsets of no bytes", ListBytes{.objects = {"\x09"}, .offsetSize = 0}.bytes(), ""},
        {"offsets of nine bytes", ListBytes{.objects = {"\x09"}, .offsetSize = 9}.bytes(), ""},
        {"references of no bytes", ListBytes{.objects = {"\x09"}, .referenceSize = 0}.bytes(), ""},
        {"references of nine bytes", ListBytes{.objects = {"\x09"}, .referenceSize = 9}.bytes(), ""},
        {"table past the trailer", ListBytes{.objects = {"\x09"}, .tableOffset = 11}.bytes(), outOfBounds},
        {"table far away", ListBytes{.objects = {"\x09"}, .tableOffset = ~0ULL}.bytes(), outOfBounds},
        {"more objects than offsets", ListBytes{.objects = {"\x09"}, .objectCount = 2}.bytes(), outOfBounds},
        {"offset past the objects", "bplist00\x09\x09" + ListBytes{.tableOffset = 9}.bytes().substr(8), ""},
        {"offset of eight bytes past the objects",
         "bplist00\x09\x01" + bigEndian(8, 7) +
             ListBytes{.offsetSize = 8, .tableOffset = 9}.bytes().substr(8),
         outOfBounds},
        {"reference past the table", one("\xA1\x01").bytes(), outOfBounds},
        {"null", one(std::string(1, '\0')).bytes(), "Plist: null byte encountered, unsure how to parse"},
        {"fill", one("\x0F").bytes(), "Plist: fill byte encountered, unsure how to parse"},
        {"unknown constant", one("\x0A").bytes(), "Plist: unknown header 10"},
        {"set", one("\xC0").bytes(), "This type is not supported"},
        {"integer of 16 bytes", one("\x14" + bigEndian(1, 16)).bytes(), ""},
        {"integer cut short", one("\x13\x01").bytes(), outOfBounds},
        {"real of two bytes", one("\x21\x01\x01").bytes(), ""},
        {"real cut short", one("\x23\x01").bytes(), outOfBounds},
        {"date that is not a number", one("\x33\x7F\xF8" + bigEndian(0, 6)).bytes(), ""},
        {"string cut short", one("\x55xyz").bytes(), outOfBounds},
        {"UTF-16 cut short", one(std::string("\x62\x00\x61\x00", 4)).bytes(), outOfBounds},
        {"data cut short", one("\x4F\x13" + bigEndian(1ULL << 40, 8)).bytes(), outOfBounds},
        {"length missing", one("\x5F").bytes(), outOfBounds},
        {"length that is a string", one("\x5F\x51x").bytes(), ""},
        {"length below zero", one("\x5F\x13" + bigEndian(~0ULL, 8)).bytes(), outOfBounds},
        {"count times size overflows",
         ListBytes{.objects = {"\xAF\x13" + bigEndian(1ULL << 61U, 8)}, .referenceSize = 8}.bytes(),
         outOfBounds},
        {"dictionary of too many", one("\xDF\x12\x7F\xFF\xFF\xFF").bytes(), outOfBounds},
        {"key that is an integer", ListBytes{.objects = {"\xD1\x01\x02", "\x10\x01", "\x09"}}.bytes(),
         "Error parsing dictionary.  Key can't be parsed as a string"},
        {"array in itself", one({"\xA1\x00", 2}).bytes(), "Plist: nested too deeply"},
        {"dictionary in itself", ListBytes{.objects = {{"\xD1\x01\x00", 3}, "\x51k"}}.bytes(),
         "Plist: nested too deeply"},
        {"513 deep", nestedBinary(513), "Plist: nested too deeply"},
        {"doublings", nestedBinary(40, 2), "Plist: unfolds to more than its size allows"},
        {"long string 63 times", oftenShared(63, text(1 << 20)),
         "Plist: unfolds to more than its size allows"},
        {"short string often", oftenShared(1 << 20, text(40)), "Plist: unfolds to more than its size allows"},
        {"empty array often", oftenShared(1 << 20, "\xA0"), "Plist: unfolds to more than its size allows"},
        {"dictionary often", dictionaryOftenShared(2000), "Plist: unfolds to more than its size allows"},
    };

    for (const auto& [name, bytes, message] : cases) {
        const std::string error = errorOf([bytes = &bytes] { read(*bytes); });
        EXPECT_NE(error, "none") << name;
        EXPECT_TRUE(message.empty() || error == message) << name << ": " << error;
    }
}

TEST(HostileInput, ListsThatShareAFewMegabytesAreRead) {
    const std::pair<std::uint64_t, std::string> cases[] = {
        {100'000, oftenShared(100'000, text(200))},
        {1'500'000, oftenShared(1'500'000, "\x09")},
        {500, dictionaryOftenShared(500)},
    };
    for (const auto& [count, bytes] : cases)
        EXPECT_EQ(std::any_cast<Plist::Array>(read(bytes)).size(), count);
}

TEST(HostileInput, LoneSurrogatesAreAConversionFailure) {
    for (const char* units : {"\xD8\x3C\x20\x20", "\x20\x20\xD8\x3C", "\xDF\xB9\xD8\x3C"})
        EXPECT_THROW(read(one("\x62" + std::string(units, 4)).bytes()), std::range_error);
}

TEST(HostileInput, DepthEndsAt512) {
    for (const std::size_t depth : {513U, 500000U})
        EXPECT_EQ(errorOf([&] { read(nestedXml(depth)); }), "Plist: nested too deeply") << depth;

    Plist::Value deepest = read(nestedBinary(512));
    EXPECT_EQ(binary(read(nestedXml(512))), binary(deepest));
    EXPECT_EQ(binary(read(xml(deepest))), binary(deepest));
    const Plist::Value tooDeep = Plist::Array{std::move(deepest)};
    EXPECT_THROW(binary(tooDeep), Plist::Error);
    EXPECT_THROW(xml(tooDeep), Plist::Error);
}

} // namespace
