#include "backup/TarArchive.h"

#include "app/SystemCall.h"
#include "platform/ShellQuoting.h"

#include <QCryptographicHash>
#include <QDebug>
#include <QFile>
#include <QProcess>

namespace Stemhaven {

namespace {

constexpr auto algorithm = QCryptographicHash::Sha256;

} // namespace

std::optional<ContentDigest> ContentDigest::ofFile(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(algorithm);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return std::nullopt;
    return ContentDigest{file.size(), hash.result()};
}

QString TarArchive::pack(const QString& folder) const {
    return systemCall(commandIn(folder, QStringLiteral("tar -czf %1"), QStringLiteral(" .")));
}

QString TarArchive::unpack(const QString& folder) const {
    return systemCall(commandIn(folder, QStringLiteral("tar -xvf %1"), QString()));
}

QString TarArchive::commandIn(const QString& folder, const QString& start, const QString& end) const {
    const QString tar = start.arg(singleQuotedForShell(m_path));
    const QString quotedFolder = singleQuotedForShell(folder);
    // There are tars that take a backslash in a folder's name for the start of an escape sequence.
    if (folder.contains(QLatin1Char('\\')))
        return QStringLiteral("cd ") + quotedFolder + QStringLiteral(" && ") + tar + end;
    return tar + QStringLiteral(" -C ") + quotedFolder + end;
}

bool TarArchive::run(const QStringList& arguments, const Sink& sink) {
    QProcess tar;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    tar.setProcessEnvironment(environment);
    tar.start(QStringLiteral("tar"), arguments, QIODevice::ReadOnly);
    bool wanted = true;
    while (wanted && tar.waitForReadyRead(-1))
        wanted = sink(tar.readAllStandardOutput());
    if (!wanted)
        tar.kill();
    if (tar.state() != QProcess::NotRunning)
        tar.waitForFinished(-1);
    if (tar.error() == QProcess::FailedToStart)
        qWarning().noquote() << "Could not run tar:" << tar.errorString();
    constexpr int logged = 2000;
    const QByteArray complaint = tar.readAllStandardError().left(logged).trimmed();
    if (!complaint.isEmpty())
        qWarning().noquote() << "tar says:" << QString::fromLocal8Bit(complaint);
    return wanted && sink(tar.readAllStandardOutput()) && tar.error() == QProcess::UnknownError &&
        tar.exitStatus() == QProcess::NormalExit && tar.exitCode() == 0;
}

std::optional<QStringList> TarArchive::list(const QString& how) const {
    // A backup's list has four lines.
    constexpr int longest = 1 << 16;
    QByteArray text;
    const bool done = run({how, m_path}, [&](const QByteArray& piece) {
        text += piece;
        return text.size() <= longest;
    });
    if (!done)
        return std::nullopt;
    return QString::fromLocal8Bit(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

std::optional<QList<TarArchive::Member>> TarArchive::members() const {
    // The long list has the kinds, but where its names begin differs between the programs that are called
    // tar.
    const auto names = list(QStringLiteral("-tf"));
    const auto lines = names ? list(QStringLiteral("-tvf")) : std::nullopt;
    if (!lines || lines->size() != names->size())
        return std::nullopt;
    QList<Member> members;
    for (qsizetype index = 0; index < names->size(); ++index)
        members.append({lines->at(index).front(), names->at(index)});
    return members;
}

bool TarArchive::holdsAtMost(qint64 most, const QStringList& members) const {
    qint64 size = 0;
    run(QStringList{QStringLiteral("-xOf"), m_path, QStringLiteral("--")} + members,
        [&](const QByteArray& piece) {
            size += piece.size();
            return size <= most;
        });
    return size <= most;
}

std::optional<ContentDigest> TarArchive::digestOf(const QString& member) const {
    ContentDigest digest;
    QCryptographicHash hash(algorithm);
    const bool done =
        run({QStringLiteral("-xOf"), m_path, QStringLiteral("--"), member}, [&](const QByteArray& piece) {
            digest.size += piece.size();
            hash.addData(piece);
            return true;
        });
    if (!done)
        return std::nullopt;
    digest.hash = hash.result();
    return digest;
}

bool TarArchive::agreesWith(const QString& folder, const QStringList& names) const {
    const auto found = members();
    if (!found) {
        qWarning().noquote() << "The archive cannot be read:" << m_path;
        return false;
    }
    QStringList open = names;
    for (const auto& member : *found) {
        const QString name = nameInArchive(member.name);
        if (name.isEmpty() && member.kind == QLatin1Char('d'))
            continue;
        if (member.kind != QLatin1Char('-') || !open.removeOne(name)) {
            qWarning().noquote() << "The archive has a member too many:" << member.name;
            return false;
        }
        const auto packed = digestOf(member.name);
        if (!packed || packed != ContentDigest::ofFile(folder + QLatin1Char('/') + name)) {
            qWarning().noquote() << "The archive's contents differ from the file:" << member.name;
            return false;
        }
    }
    return open.isEmpty();
}

QString nameInArchive(const QString& member) {
    if (member == QLatin1String("."))
        return {};
    return member.startsWith(QLatin1String("./")) ? member.mid(2) : member;
}

} // namespace Stemhaven
