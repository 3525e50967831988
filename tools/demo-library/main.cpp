#include "BundleWriter.h"
#include "CatalogueWriter.h"
#include "NumberOption.h"
#include "SongIdeas.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QLoggingCategory>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <vector>

namespace {

struct Order {
    int projects = 0;
    std::uint64_t seed = 1;
    bool plain = false;
    bool catalogue = false;
    QDate today;
    DemoLibrary::BundleWriter::Options bundles;
    /// Absolute.
    QString library;
};

Order readOrder(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Writes a library of made-up Logic Pro projects. The same arguments give the same library, and with "
        "the same day the same catalogue."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("projects"), QStringLiteral("How many projects."), QStringLiteral("N"),
         QStringLiteral("300")},
        {QStringLiteral("seed"), QStringLiteral("Another number gives another library."), QStringLiteral("S"),
         QStringLiteral("1")},
        {QStringLiteral("entries-per-bundle"), QStringLiteral("Files and folders in each project, about."),
         QStringLiteral("N"), QStringLiteral("25")},
        {QStringLiteral("plain"), QStringLiteral("No pictures, and no user data in the catalogue.")},
        {QStringLiteral("catalogue"),
         QStringLiteral(
             "Also record the projects in the current profile, which must not have a catalogue yet.")},
        {QStringLiteral("today"),
         QStringLiteral("The day near which projects of the catalogue are released."),
         QStringLiteral("YYYY-MM-DD"), QDate::currentDate().toString(Qt::ISODate)},
    });
    parser.addPositionalArgument(
        QStringLiteral("LIBRARY_FOLDER"), QStringLiteral("A new or an empty folder."));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);

    Order order;
    order.projects = numberOption(parser, QStringLiteral("projects"), 0);
    order.seed = static_cast<std::uint64_t>(numberOption(parser, QStringLiteral("seed"), 0));
    order.plain = parser.isSet(QStringLiteral("plain"));
    order.catalogue = parser.isSet(QStringLiteral("catalogue"));
    order.today = QDate::fromString(parser.value(QStringLiteral("today")), Qt::ISODate);
    if (!order.today.isValid())
        throw std::runtime_error("--today wants a day, for example 2026-03-27");
    order.bundles.entriesPerBundle = numberOption(parser, QStringLiteral("entries-per-bundle"), 7);
    order.bundles.pictures = !order.plain;
    order.library =
        QDir::cleanPath(QDir::current().absoluteFilePath(parser.positionalArguments().constFirst()));
    return order;
}

void writeLibrary(const Order& order) {
    if (!QDir(order.library).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        throw std::runtime_error(order.library.toStdString() + " is not empty");
    if (order.catalogue)
        DemoLibrary::CatalogueWriter::checkProfile();
    QDir().mkpath(order.library);

    DemoLibrary::SongIdeas ideas(order.seed);
    DemoLibrary::BundleWriter bundles(order.library.toStdString(), order.bundles);
    std::vector<DemoLibrary::Song> songs;
    songs.reserve(static_cast<std::size_t>(order.projects));
    for (int project = 0; project < order.projects; ++project) {
        songs.push_back(ideas.next());
        bundles.write(songs.back());
    }
    std::printf(
        "%d projects with %lld files and folders in %s\n", order.projects,
        static_cast<long long>(bundles.entriesWritten()), qUtf8Printable(order.library));

    if (order.catalogue) {
        DemoLibrary::CatalogueWriter catalogue(order.library, !order.plain, order.today);
        catalogue.write(songs);
        std::printf("All of them recorded in %s\n", qUtf8Printable(catalogue.databasePath()));
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        QCoreApplication::setOrganizationDomain(QStringLiteral("stemhaven.app"));
        QCoreApplication::setApplicationName(QStringLiteral("Stemhaven"));
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false\ndefault.info=false"));
        const QCoreApplication application(argc, argv);
        writeLibrary(readOrder(application));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "stemhaven-demo-library: %s\n", error.what());
        return 1;
    }
}
