#pragma once

#include <QDebug>
#include <QString>

#include <cstdint>

namespace Stemhaven {

/// The identity of a file system object: device and inode. It survives a rename and a move within one volume.
struct SystemUniqueFileID {
    /// Invalid.
    SystemUniqueFileID() = default;
    /// Follows symbolic links. A path that cannot be looked at is logged and gives an invalid identity.
    explicit SystemUniqueFileID(const char* path);
    /// Of what is open. Invalid, without a line in the log, where the descriptor is not.
    static SystemUniqueFileID of(int descriptor);

    /// From what toString() gives. Invalid for any other text.
    static SystemUniqueFileID fromString(const QString& text);

    /// Device and inode in decimal, joined by "-".
    QString toString() const;

    operator QString() const { return toString(); } // NOLINT(google-explicit-constructor)

    std::int32_t device = 0;
    std::uint64_t inode = 0;
    bool valid = false;
};

/// The comparisons look at device and inode alone.
bool operator==(const SystemUniqueFileID& a, const SystemUniqueFileID& b);
bool operator!=(const SystemUniqueFileID& a, const SystemUniqueFileID& b);

/// True when the device of a is less, or else when its inode is less. No strict weak order, so never the
/// order of a sorted container: with a smaller device on one side and a smaller inode on the other, both are
/// less.
bool operator<(const SystemUniqueFileID& a, const SystemUniqueFileID& b);

QDebug operator<<(QDebug debug, const SystemUniqueFileID& sufid);

} // namespace Stemhaven
