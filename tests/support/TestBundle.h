#pragma once

#include "plist/Value.h"

#include <cstdint>
#include <filesystem>
#include <string>

/// A believable project bundle for tests: every entry can be changed or erased before it is written.
struct TestBundle {
    enum class Form { Binary, Xml };

    /// Fills information and metaData with what a small finished song has.
    TestBundle() : TestBundle(120) {}

    explicit TestBundle(std::int64_t tempo);

    /// Makes the bundle with all that it lacks. Files that stand there already are written anew, others are
    /// left.
    void write(const std::filesystem::path& bundle) const;

    /// Writes a single property list with the folders above it.
    static void
    writeList(const std::filesystem::path& file, const Plist::Value& root, Form form = Form::Binary);

    /// What goes into Resources/ProjectInformation.plist.
    Plist::Dictionary information;
    /// What goes into the alternative's MetaData.plist.
    Plist::Dictionary metaData;
    /// The name of the one alternative's folder. It is not derived from information's ActiveVariant.
    std::string alternative = "000";
    Form form = Form::Binary;
};
