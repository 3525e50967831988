#pragma once

#include "support/TestBundle.h"

#include <QString>
#include <QTemporaryDir>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>

/// A bundle in a folder of its own, whole or damaged: alternative 000 of time 100, with its backup 00 of time
/// 50. The files of a snapshot contain their time. Paths are those in the bundle.
class DamagedBundle {
public:
    enum Damage {
        None,
        EmptyData,
        NoData,
        EmptyList,
        NoList,
        NothingLeft,
        NoInformation,
        CorruptInformation,
        All
    };

    static constexpr Damage all[] = {EmptyData,   NoData,        EmptyList,          NoList,
                                     NothingLeft, NoInformation, CorruptInformation, All};

    explicit DamagedBundle(Damage damage = None)
        : m_folder(std::make_unique<QTemporaryDir>()),
          m_path(m_folder->filePath("Song.logicx").toStdString()) {
        make(damage);
    }

    /// In a folder that is given.
    explicit DamagedBundle(const std::filesystem::path& bundle, Damage damage = None) : m_path(bundle) {
        make(damage);
    }

    QString path() const { return QString::fromStdString(m_path.string()); }

    std::string at(const std::string& file) const { return (file.empty() ? m_path : m_path / file).string(); }

    bool has(const std::string& file) const { return exists(std::filesystem::symlink_status(at(file))); }

    /// Empty for a file that is missing.
    std::string contents(const std::string& file) const {
        std::ifstream stream(at(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// The contents of all files.
    std::map<std::string, std::string> everything() const {
        std::map<std::string, std::string> files;
        if (!has(""))
            return files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_path)) {
            if (!entry.is_directory())
                files[entry.path().lexically_relative(m_path)] =
                    contents(entry.path().lexically_relative(m_path));
        }
        return files;
    }

    const DamagedBundle& folder(const std::string& name) const {
        std::filesystem::create_directories(at(name));
        return *this;
    }

    const DamagedBundle& file(const std::string& name, const std::string& contents) const {
        std::filesystem::create_directories(std::filesystem::path(at(name)).parent_path());
        std::ofstream(at(name), std::ios::binary) << contents;
        return *this;
    }

    /// In the place of what has that name.
    const DamagedBundle& link(const std::string& name, const std::string& to) const {
        remove(name);
        std::filesystem::create_symlink(to, at(name));
        return *this;
    }

    const DamagedBundle& remove(const std::string& name) const {
        std::filesystem::remove_all(at(name));
        return *this;
    }

    /// A complete snapshot; time is in seconds after a fixed moment.
    const DamagedBundle& snapshot(const std::string& name, int time) const {
        file(name + "/MetaData.plist", "list " + std::to_string(time));
        file(name + "/ProjectData", "data " + std::to_string(time));
        std::filesystem::last_write_time(
            at(name + "/MetaData.plist"), std::filesystem::file_time_type() + std::chrono::seconds(time));
        return *this;
    }

    /// A sound information file.
    const DamagedBundle& inform(int activeVariant) const {
        TestBundle bundle;
        bundle.information["ActiveVariant"] = std::int64_t{activeVariant};
        TestBundle::writeList(at("Resources/ProjectInformation.plist"), bundle.information);
        return *this;
    }

private:
    void make(Damage damage) const {
        const std::string alternative = "Alternatives/000";
        const std::string information = "Resources/ProjectInformation.plist";
        inform(0);
        snapshot(alternative, 100);
        snapshot(alternative + "/Project File Backups/00", 50);
        if (damage == EmptyData || damage == All)
            file(alternative + "/ProjectData", "");
        if (damage == NoData || damage == NothingLeft)
            remove(alternative + "/ProjectData");
        if (damage == EmptyList)
            file(alternative + "/MetaData.plist", "");
        if (damage == NoList || damage == NothingLeft)
            remove(alternative + "/MetaData.plist");
        if (damage == NoInformation)
            remove(information);
        if (damage == CorruptInformation || damage == All)
            file(information, "bplist00");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::filesystem::path m_path;
};
