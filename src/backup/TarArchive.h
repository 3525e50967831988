#pragma once

#include <QByteArray>
#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Stemhaven {

/// The length of some contents, and their SHA-256.
struct ContentDigest {
    qint64 size = 0;
    QByteArray hash;

    bool operator==(const ContentDigest&) const = default;

    /// Nothing where path is no file that can be read.
    static std::optional<ContentDigest> ofFile(const QString& path);
};

/// A compressed archive, written and read by the system's tar. Every call waits for it; none on the GUI
/// thread where the archive may be large.
class TarArchive {
public:
    struct Member {
        /// As ls shows it: "-" for a plain file, "d" for a folder.
        QChar kind;
        QString name;
    };

    explicit TarArchive(const QString& path) : m_path(path) {}

    QString path() const { return m_path; }

    /// Writes all that is in folder into the archive, and gives what tar said on standard output.
    QString pack(const QString& folder) const;
    /// The reverse. folder must exist, and members() should have been looked at.
    QString unpack(const QString& folder) const;

    /// Nothing where tar cannot read the archive to its end, or where it has more members than a backup can
    /// have.
    std::optional<QList<Member>> members() const;

    /// Whether the members of these names, or all where none is named, hold no more bytes than that
    /// together. Says so also where tar cannot read them; digestOf() does not.
    bool holdsAtMost(qint64 most, const QStringList& members = {}) const;

    /// The contents of the member of that name. Nothing where tar cannot read them.
    std::optional<ContentDigest> digestOf(const QString& member) const;

    /// Whether the archive has exactly the files of these names, as plain files and beside nothing but their
    /// folder, with the very contents that they have in folder. Says in the log what is wrong.
    bool agreesWith(const QString& folder, const QStringList& names) const;

private:
    using Sink = std::function<bool(const QByteArray& piece)>;

    QString commandIn(const QString& folder, const QString& start, const QString& end) const;
    static bool run(const QStringList& arguments, const Sink& sink);
    std::optional<QStringList> list(const QString& how) const;

    QString m_path;
};

/// The name of a member without the folder that all members are in; empty for that folder itself.
QString nameInArchive(const QString& member);

} // namespace Stemhaven
