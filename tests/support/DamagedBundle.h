#pragma once

#include "app/errors/IOException.h"
#include "support/TestBundle.h"

#include <QDir>
#include <QString>
#include <QTemporaryDir>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
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

    void folder(const std::string& name) const { std::filesystem::create_directories(at(name)); }

    void file(const std::string& name, const std::string& contents) const {
        std::filesystem::create_directories(std::filesystem::path(at(name)).parent_path());
        std::ofstream(at(name), std::ios::binary) << contents;
    }

    void link(const std::string& name, const std::string& to) const {
        std::filesystem::create_symlink(to, at(name));
    }

    void remove(const std::string& name) const { std::filesystem::remove_all(at(name)); }

    void rename(const std::string& from, const std::string& to) const {
        std::filesystem::rename(at(from), at(to));
    }

    /// A complete snapshot; time is in seconds after a fixed moment.
    void snapshot(const std::string& name, int time) const {
        file(name + "/MetaData.plist", "list " + std::to_string(time));
        file(name + "/ProjectData", "data " + std::to_string(time));
        std::filesystem::last_write_time(
            at(name + "/MetaData.plist"), std::filesystem::file_time_type() + std::chrono::seconds(time));
    }

    /// A sound information file.
    void inform(int activeVariant) const {
        TestBundle bundle;
        bundle.information["ActiveVariant"] = std::int64_t{activeVariant};
        TestBundle::writeList(at("Resources/ProjectInformation.plist"), bundle.information);
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
