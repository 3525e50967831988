#include "ListBytes.h"
#include "plist/Base64.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <locale>

namespace {

using Plist::Array;
using Plist::Data;
using Plist::Dictionary;
using Plist::Value;

std::string plist(const std::string& content) {
    return "<?xml version=\"1.0\"?><plist version=\"1.0\">" + content + "</plist>";
}

TEST(Xml, DocumentIsWrittenAs) {
    const Value value = Dictionary{
        {"a <key>", Array{std::int64_t{-7}, short{7}, 92.5, 0.5F, true, false, Data{'a', 'b'}}},
        {"b", Plist::Date(2, 29, 2024, 12, 0, 0, true)},
        {"c", std::string("Gr\u00f6\u00dfe & more")},
    };
    EXPECT_EQ(xml(value), R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
	<dict>
		<key>a &lt;key&gt;</key>
		<array>
			<integer>-7</integer>
			<integer>7</integer>
			<real>92.5</real>
			<real>0.5</real>
			<true />
			<false />
			<data>YWI=</data>
		</array>
		<key>b</key>
		<date>2024-02-29T12:00:00Z</date>
		<key>c</key>
		<string>Größe &amp; more</string>
	</dict>
</plist>
)");
}

TEST(Xml, WhatWasWrittenReadsBack) {
    const Value value = Array{
        std::string(),
        std::string(" \n\t "),
        std::string(" lead and trail "),
        std::string("<![CDATA[]]>&amp;\x01"),
        std::string("Gr\u00f6\u00dfe"),
        Data{},
        Data(100, '\xFE'),
        Dictionary{{"", Array{}}, {" ", Dictionary{}}},
        std::numeric_limits<std::int64_t>::min(),
        1e-7};
    EXPECT_EQ(binary(read(xml(value))), binary(value));
    EXPECT_THROW(xml(std::string("nul\0inside", 10)), Plist::Error);
}

TEST(Xml, ElementsRead) {
    const struct {
        std::string element;
        Value value;
    } cases[] = {
        {"<integer> \n+12abc</integer>", std::int64_t{12}},
        {"<integer>abc</integer>", std::int64_t{0}},
        {"<integer/>", std::int64_t{0}},
        {"<integer>99999999999999999999</integer>", std::numeric_limits<std::int64_t>::max()},
        {"<integer>-99999999999999999999</integer>", std::numeric_limits<std::int64_t>::min()},
        {"<real> +92.5 bpm</real>", 92.5},
        {"<real>abc</real>", 0.0},
        {"<real>1e999</real>", std::numeric_limits<double>::infinity()},
        {"<string>&#228;<!-- -->x</string>", std::string("\u00e4")},
        {"<string><![CDATA[<a>]]></string>", std::string("<a>")},
        {"<data>\n\tYW\n\tI=\n</data>", Data{'a', 'b'}},
        {"<!-- first --><true/><false/>", true},
        {"<dict><key>k</key><true/><key>k</key><false/></dict>", Dictionary{{"k", false}}},
    };

    for (const auto& [element, value] : cases) {
        SCOPED_TRACE(element);
        const Value found = read(plist(element));
        ASSERT_EQ(found.type(), value.type());
        EXPECT_EQ(binary(found), binary(value));
    }

    const std::u16string wide = u"\uFEFF<plist><string>Gr\u00f6\u00dfe</string></plist>";
    const std::string bytes(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(char16_t));
    EXPECT_EQ(std::any_cast<std::string>(read(bytes)), "Gr\u00f6\u00dfe");
}

TEST(Xml, MalformedListsAreRefused) {
    const struct {
        std::string text;
        std::string message;
    } cases[] = {
        {"bplist01", "Plist: XML parsed with error No document element found"},
        {"<plist>", "Plist: XML parsed with error Start-end tags mismatch"},
        {"<dict/>", "Plist: XML unknown node type "},
        {plist(""), "Plist: XML unknown node type "},
        {plist("<array>text</array>"), "Plist: XML unknown node type "},
        {plist("<set/>"), "Plist: XML unknown node type set"},
        {plist("<dict><true/></dict>"), "Plist: XML dictionary key expected but not found"},
        {plist("<dict><key>A</key></dict>"), "Plist: XML dictionary value expected for key Abut not found"},
        {plist("<dict><key>A</key><key>B</key></dict>"),
         "Plist: XML dictionary value expected for key Abut found another key node"},
        {plist("<data>YW*=</data>"), "Plist: data is not base64"},
        {plist("<date>2024-02-29</date>"), "Plist: date text is incomplete"},
        {"", "Plist: Empty plist data"},
    };

    for (const auto& [text, message] : cases)
        EXPECT_EQ(errorOf(text), message) << text;
}

TEST(Xml, RealsHaveSixDigits) {
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {92.5, "92.5"}, {123.456789, "123.457"}, {0.0000001, "1e-07"}, {120.0, "120"}, {1e6, "1e+06"},
    };

    for (const auto& [value, text] : cases)
        EXPECT_NE(xml(value).find(std::string("<real>") + text + "</real>"), std::string::npos) << text;
}

// Switches to a locale with a decimal comma, made for the purpose where none is installed.
bool useDecimalComma() {
    const char* name = "de_DE.UTF-8";
    if (std::setlocale(LC_ALL, name) != nullptr)
        return true;
    const std::string folder = std::filesystem::temp_directory_path() / "locales";
    std::filesystem::create_directory(folder);
    const std::string command = "localedef -i de_DE -f UTF-8 " + folder + "/" + name + " 2>&1";
    if (std::system(command.c_str()) != 0)
        return false;
    setenv("LOCPATH", folder.c_str(), 1);
    return std::setlocale(LC_ALL, name) != nullptr;
}

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }

    char do_thousands_sep() const override { return '.'; }

    std::string do_grouping() const override { return "\3"; }
};

TEST(Xml, NumbersKnowNoLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new DecimalComma));
    if (useDecimalComma()) {
        EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    }
    const Value value = Array{92.5, std::int64_t{1234567}};
    const std::string text = xml(value);
    const std::string readBack = binary(read(text));
    std::setlocale(LC_ALL, "C");
    std::locale::global(before);

    EXPECT_NE(text.find("<real>92.5</real>"), std::string::npos) << text;
    EXPECT_NE(text.find("<integer>1234567</integer>"), std::string::npos) << text;
    EXPECT_EQ(readBack, binary(value));
}

TEST(Base64, EncodesAndDecodes) {
    const struct {
        std::string data;
        const char* text;
    } cases[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"\xFB\xFF\xBF", "+/+/"},
        {std::string(2, '\0'), "AAA="},
    };

    for (const auto& [data, text] : cases) {
        const Data bytes(data.begin(), data.end());
        EXPECT_EQ(Plist::base64Encode(bytes), text);
        EXPECT_EQ(Plist::base64Decode(text), bytes);
    }
    EXPECT_EQ(Plist::base64Decode(" Z\tm\r\n8"), (Data{'f', 'o'}));
    EXPECT_EQ(Plist::base64Decode("Zg==Zg=="), Data{'f'});
    for (const char* text : {"Zm9v!", "Zm-_", "Zm9vY", "\xC3\xA4"})
        EXPECT_THROW(Plist::base64Decode(text), Plist::Error) << text;
}

} // namespace
