// Any bytes as each of the three lists of a bundle: all that is asked of them is an answer or a known
// refusal.

#include "FuzzTarget.h"
#include "app/errors/IOException.h"
#include "plist/Value.h"
#include "project/NoteFile.h"
#include "project/ProjectData.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <functional>

using namespace Stemhaven;

namespace {

/// A bundle all of whose lists are one file under many names, so that an input costs one writing.
class Bundle {
public:
    Bundle() {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        QDir().mkpath(path() + "/Resources");
        write({});
        for (const char* name : {"/Resources/ProjectInformation.plist", "/MetaData.plist"})
            std::filesystem::create_hard_link(m_list.toStdString(), (path() + name).toStdString());
        QDir().mkpath(path() + "/Alternatives");
        for (int i = 0; i < 10; ++i)
            QFile::link(path(), path() + QStringLiteral("/Alternatives/00%1").arg(i));
    }

    QString path() const { return m_folder.filePath("Song.logicx"); }

    void write(const QByteArray& bytes) const {
        QFile file(m_list);
        require(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
    }

private:
    QTemporaryDir m_folder;
    QString m_list = path() + "/Resources/Stemhaven.plist";
};

void readingOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const Plist::Error&) {     // NOLINT(bugprone-empty-catch)
    } catch (const IOException&) {      // NOLINT(bugprone-empty-catch)
    } catch (const std::bad_cast&) {    // NOLINT(bugprone-empty-catch)
    } catch (const std::range_error&) { // NOLINT(bugprone-empty-catch)
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Bundle bundle;
    bundle.write(QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    readingOf([] {
        const auto note = loadStemhavenPlistDetails(ProjectDetails(bundle.path()));
        require(!note || note->second.size() <= 64);
    });
    readingOf([] {
        const ProjectData song(bundle.path());
        for (const auto& ask : std::initializer_list<std::function<void()>>{
                 [&] { song.bpm(); }, [&] { song.numberOfTracks(); }, [&] { song.sampleRate(); },
                 [&] { require(song.songKey().size() <= 1024); }, [&] { song.songGenderKey(); },
                 [&] { song.songSignatureNumerator(); },
                 [&] {
                     song.songSignatureDenominator();
                 }})
            readingOf(ask);
        require(song.logicVersion().size() <= 1024 && song.alternativeCount() >= 1);
    });
    return 0;
}
