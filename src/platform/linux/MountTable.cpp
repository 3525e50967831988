#include "platform/linux/MountTable.h"

#include "platform/posix/PathText.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace Stemhaven {

namespace {

/// File systems over a network, from the host of a virtual machine, or served by another process. An
/// automount point stands for what will be mounted there when it is looked at.
constexpr std::array<std::string_view, 24> remoteTypes{
    "9p",       "afs",    "autofs",    "beegfs", "ceph",  "cifs",   "coda",     "fuse",
    "fuseblk",  "gfs2",   "glusterfs", "lustre", "ncpfs", "nfs",    "nfs4",     "ocfs2",
    "orangefs", "prl_fs", "pvfs2",     "smb3",   "smbfs", "vboxsf", "virtiofs", "vmhgfs"};

bool isRemoteType(std::string_view type) {
    return type.starts_with("fuse.") ||
        std::find(remoteTypes.begin(), remoteTypes.end(), type) != remoteTypes.end();
}

/// Blanks and the like stand as "\" and three octal digits.
std::string unescaped(const std::string& field) {
    constexpr std::size_t digits = 3;
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && field.find_first_not_of("01234567", i + 1) > i + digits &&
            i + digits < field.size()) {
            text += static_cast<char>(std::stoi(field.substr(i + 1, digits), nullptr, 8));
            i += digits;
        } else {
            text += field[i];
        }
    }
    return text;
}

/// Empty when path is no link.
std::string linkTarget(const std::string& path) {
    struct stat status = {};
    std::array<char, PATH_MAX> target = {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode))
        return {};
    const ssize_t size = readlink(path.c_str(), target.data(), target.size());
    return size > 0 ? std::string(target.data(), static_cast<std::size_t>(size)) : std::string();
}

/// The names in a path, the first one last.
void pushNames(const std::string& path, std::vector<std::string>& names) {
    std::istringstream parts(path);
    std::vector<std::string> inOrder;
    for (std::string name; std::getline(parts, name, '/');) {
        if (!name.empty() && name != ".")
            inOrder.push_back(name);
    }
    names.insert(names.end(), inOrder.rbegin(), inOrder.rend());
}

} // namespace

MountTable MountTable::current() {
    std::ifstream table("/proc/self/mountinfo");
    return MountTable(table);
}

MountTable::MountTable(std::istream& table) {
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        Mount mount;
        std::string ignored;
        fields >> mount.number >> mount.parent >> ignored >> ignored >> mount.point;
        // Any number of optional fields ends with a dash.
        while (fields >> ignored && ignored != "-") {
        }
        fields >> mount.type;
        mount.point = unescaped(mount.point);
        if (fields)
            m_mounts.push_back(std::move(mount));
    }
}

const MountTable::Mount* MountTable::mountedAt(const std::string& path, const Mount* from) const {
    const Mount* top = nullptr;
    const auto isOnTop = [&](const Mount& mount) {
        const bool isReached = from == nullptr || mount.parent == from->number;
        return isReached && mount.point == path && mount.number != mount.parent;
    };
    // Several mounts at one place cover each other.
    for (auto found = std::find_if(m_mounts.rbegin(), m_mounts.rend(), isOnTop); found != m_mounts.rend();
         found = std::find_if(m_mounts.rbegin(), m_mounts.rend(), isOnTop))
        top = from = &*found;
    return top;
}

bool MountTable::hasRemote() const {
    return std::any_of(
        m_mounts.begin(), m_mounts.end(), [](const Mount& mount) { return isRemoteType(mount.type); });
}

MountTable::Place MountTable::find(const std::string& path) const {
    // As many as the system follows.
    constexpr int mostLinks = 40;

    struct Step {
        std::string path;
        const Mount* mount = nullptr;

        bool isRemote() const { return mount != nullptr && isRemoteType(mount->type); }
    };

    std::vector<std::string> names;
    pushNames(path, names);
    std::vector<Step> steps{{"/", mountedAt("/", nullptr)}};
    for (int links = 0; !names.empty() && !steps.back().isRemote();) {
        const std::string name = std::move(names.back());
        names.pop_back();
        if (name == "..") {
            if (steps.size() > 1)
                steps.pop_back();
            continue;
        }
        const Step& last = steps.back();
        const std::string next = entryOf(last.path, name);
        const Mount* mount = mountedAt(next, last.mount);
        const std::string target = mount == nullptr ? linkTarget(next) : std::string();
        if (target.empty()) {
            steps.push_back({next, mount != nullptr ? mount : last.mount});
            continue;
        }
        if (++links > mostLinks)
            break;
        if (target.starts_with('/'))
            steps.erase(steps.begin() + 1, steps.end());
        pushNames(target, names);
    }
    const Step& last = steps.back();
    return {last.path, last.mount != nullptr ? last.mount->number : 0, last.isRemote()};
}

std::vector<std::string> MountTable::pointsBelow(const std::string& folder) const {
    std::vector<std::string> points;
    for (const auto& mount : m_mounts) {
        if (mount.point.starts_with(entryOf(folder, "")) && mount.point != folder)
            points.push_back(mount.point);
    }
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

std::vector<std::string> MountTable::differences(const MountTable& other) const {
    auto mounts = m_mounts;
    auto others = other.m_mounts;
    std::sort(mounts.begin(), mounts.end());
    std::sort(others.begin(), others.end());
    std::vector<Mount> changed;
    std::set_symmetric_difference(
        mounts.begin(), mounts.end(), others.begin(), others.end(), std::back_inserter(changed));
    std::vector<std::string> points;
    points.reserve(changed.size());
    for (const auto& mount : changed)
        points.push_back(mount.point);
    return points;
}

} // namespace Stemhaven
