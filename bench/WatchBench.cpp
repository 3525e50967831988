// watch_bench ROOT NUMBER: sets the watches on a library of that many bundles, and has inotifywait set its
// own on the same tree.

#include "BenchProcess.h"
#include "Report.h"
#include "platform/FileEventStream.h"
#include "project/BundleSuffixes.h"

#include <QDir>
#include <QFile>
#include <QProcess>

using Stemhaven::FileEventStream;

namespace {

int watchesOfThisProcess() {
    int watches = 0;
    const QDir descriptors(QStringLiteral("/proc/self/fdinfo"));
    const auto names = descriptors.entryList(QDir::Files);
    for (const auto& name : names) {
        QFile file(descriptors.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            watches += static_cast<int>(file.readAll().count("inotify wd:"));
    }
    return watches;
}

void watchAll(const QString& root, int number) {
    Stemhaven::FileWatchRequest request;
    request.roots = QStringList(root);
    request.bundleSuffixes = Stemhaven::bundleSuffixes();
    const Stopwatch watch;
    const auto stream = FileEventStream::create(request, [](const auto&) {});
    if (!stream->start() || stream->stateOf(root) != FileEventStream::RootState::Watched)
        fail("The library is not watched.");
    report(QStringLiteral("watch"), watch.seconds());
    report(QStringLiteral("watch-each"), static_cast<double>(watchesOfThisProcess()) / number, "1");
    stream->stop();
}

void watchAllWithInotifywait(const QString& root) {
    QProcess inotifywait;
    inotifywait.setReadChannel(QProcess::StandardError);
    inotifywait.setStandardOutputFile(QProcess::nullDevice());
    const Stopwatch watch;
    inotifywait.start(QStringLiteral("inotifywait"), {QStringLiteral("-rm"), root});
    QByteArray messages;
    while (!messages.contains("Watches established")) {
        if (!inotifywait.waitForReadyRead(-1))
            fail("inotifywait failed.");
        messages += inotifywait.readAllStandardError();
    }
    report(QStringLiteral("watch-inotifywait"), watch.seconds());
    inotifywait.kill();
    inotifywait.waitForFinished(-1);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    nameProgram();
    const QCoreApplication application(argc, argv);
    const QString root = QString::fromLocal8Bit(argv[1]);
    watchAll(root, QByteArray(argv[2]).toInt());
    watchAllWithInotifywait(root);
    return 0;
}
