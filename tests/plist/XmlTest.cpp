#include "ListBytes.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <limits>

namespace {

using namespace Plist;

std::string plist(const std::string& content) {
    return "<?xml version=\"1.0\"?><plist version=\"1.0\">" + content + "</plist>";
}

TEST(Xml, DocumentIsWrittenAs) {
    const Value value = Dictionary{
        {"a <key>", Array{-7, 92.5, 123.456789, 1e-7, 120.0, 1e6, true, false}},
        {"b", Plist::Date(2, 29, 2024, 12, 0, 0, true)},
        {"c", std::string("Gr\u00f6\u00dfe & more")},
        {"d", Array{Data{}, Data{'f'}, Data{'f', 'o'}, Data{'\xFB', '\xFF', '\xBF'}}},
    };
    EXPECT_EQ(xml(value), R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
	<dict>
		<key>a &lt;key&gt;</key>
		<array>
			<integer>-7</integer>
			<real>92.5</real>
			<real>123.457</real>
			<real>1e-07</real>
			<real>120</real>
			<real>1e+06</real>
			<true />
			<false />
		</array>
		<key>b</key>
		<date>2024-02-29T12:00:00Z</date>
		<key>c</key>
		<string>Größe &amp; more</string>
		<key>d</key>
		<array>
			<data></data>
			<data>Zg==</data>
			<data>Zm8=</data>
			<data>+/+/</data>
		</array>
	</dict>
</plist>
)");
}

TEST(Xml, ElementsRead) {
    const std::pair<std::string, Value> cases[] = {
        {"<integer> \n+12abc</integer>", std::int64_t{12}},
        {"<integer>99999999999999999999</integer>", std::numeric_limits<std::int64_t>::max()},
        {"<real> +92.5 bpm</real>", 92.5},
        {"<real>1e999</real>", std::numeric_limits<double>::infinity()},
        {"<string>&#228;<!-- -->x</string>", std::string("\u00e4")},
        {"<string><![CDATA[<a>]]></string>", std::string("<a>")},
        {"<data>\r\n\tYW\n\tI =\n</data>", Data{'a', 'b'}},
        {"<data>Zg==Zg==</data>", Data{'f'}},
        {"<!-- first --><true/><false/>", true},
        {"<dict><key>k</key><true/><key>k</key><false/></dict>", Dictionary{{"k", false}}},
    };

    for (const auto& [element, value] : cases) {
        SCOPED_TRACE(element);
        const Value found = read(plist(element));
        ASSERT_EQ(found.type(), value.type());
        EXPECT_EQ(binary(found), binary(value));
    }
}

TEST(Xml, MalformedListsAreRefused) {
    const std::pair<std::string, std::string> cases[] = {
        {"bplist01", "Plist: XML parsed with error No document element found"},
        {"<plist>", "Plist: XML parsed with error Start-end tags mismatch"},
        {plist(""), "Plist: XML unknown node type "},
        {plist("<set/>"), "Plist: XML unknown node type set"},
        {plist("<dict><true/></dict>"), "Plist: XML dictionary key expected but not found"},
        {plist("<dict><key>A</key></dict>"), "Plist: XML dictionary value expected for key Abut not found"},
        {plist("<data>YW*=</data>"), "Plist: data is not base64"},
        {plist("<data>Zm9vY</data>"), "Plist: data is not base64"},
        {plist("<data>\u00e4</data>"), "Plist: data is not base64"},
        {plist("<date>yesterday</date>"), "Plist: date text is incomplete"},
        {"", "Plist: Empty plist data"},
    };

    for (const auto& [text, message] : cases)
        EXPECT_EQ(errorOf([text = &text] { read(*text); }), message) << text;
}

TEST(Xml, NumbersKnowNoLocale) {
    // The C library's locale is made for the purpose where that can be done.
    const std::string folder = std::filesystem::temp_directory_path() / "locales";
    std::filesystem::create_directory(folder);
    const std::string command = "localedef -i de_DE -f UTF-8 " + folder + "/de_DE.UTF-8 2>&1";
    if (std::system(command.c_str()) == 0)
        setenv("LOCPATH", folder.c_str(), 1);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    const Value value = Array{92.5, std::int64_t{1234567}};
    const std::string text = xml(value);
    const std::string readBack = binary(read(text));
    std::setlocale(LC_ALL, "C");

    EXPECT_NE(text.find("<real>92.5</real>"), std::string::npos) << text;
    EXPECT_NE(text.find("<integer>1234567</integer>"), std::string::npos) << text;
    EXPECT_EQ(readBack, binary(value));
}

} // namespace
