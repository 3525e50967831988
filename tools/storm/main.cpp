#include "NumberOption.h"
#include "Storm.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>
#include <exception>

namespace {

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(QStringLiteral(
        "Changes a library of projects while Stemhaven follows it, is stopped and is killed, and checks the "
        "catalogue. The same seed and steps give the same changes."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("seed"), QStringLiteral("Another number gives other changes."), QStringLiteral("S"),
         QStringLiteral("1")},
        {QStringLiteral("steps"), QStringLiteral("How many changes."), QStringLiteral("N"),
         QStringLiteral("200")},
        {QStringLiteral("settle-each"), QStringLiteral("Check after every so many changes."),
         QStringLiteral("N"), QStringLiteral("20")},
        {QStringLiteral("only"),
         QStringLiteral("Choose from these operations alone; an unknown name lists them all."),
         QStringLiteral("NAME,...")},
        {QStringLiteral("program"), QStringLiteral("The program, in place of the one built with this tool."),
         QStringLiteral("PATH"), QCoreApplication::applicationDirPath() + QStringLiteral("/stemhaven")},
        {QStringLiteral("keep"),
         QStringLiteral("Have the program log all that it does, and keep profile and library.")},
    });
}

void printFailure(const Storm::Storm& storm, const Storm::Options& options, const char* what) {
    std::fprintf(
        stderr, "seed %llu, %d steps, settling each %d:\n", static_cast<unsigned long long>(options.seed),
        options.steps, options.settleEach);
    for (std::size_t line = 0; line < storm.history().size(); ++line)
        std::fprintf(stderr, "%4zu %s\n", line + 1, storm.history()[line].c_str());
    std::fprintf(stderr, "stemhaven-storm: %s\n", what);
}

int run(const QCoreApplication& application) {
    QCommandLineParser parser;
    describe(parser);
    parser.process(application);
    Storm::Options options;
    options.seed = static_cast<std::uint64_t>(numberOption(parser, QStringLiteral("seed"), 0));
    options.steps = numberOption(parser, QStringLiteral("steps"), 1);
    options.settleEach = numberOption(parser, QStringLiteral("settle-each"), 1);
    for (const auto& name : parser.value(QStringLiteral("only")).split(',', Qt::SkipEmptyParts))
        options.only.push_back(name.toStdString());
    options.program = parser.value(QStringLiteral("program"));
    options.detailedLog = parser.isSet(QStringLiteral("keep"));

    QTemporaryDir folder;
    folder.setAutoRemove(!options.detailedLog);
    if (options.detailedLog)
        std::printf("Profile and library are in %s\n", qUtf8Printable(folder.path()));
    Storm::Storm storm(options, folder.path().toStdString());
    try {
        storm.run();
    } catch (const std::exception& error) {
        printFailure(storm, options, error.what());
        return 1;
    }
    std::printf("%s\n", storm.summary().c_str());
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false\ndefault.warning=false"));
        const QCoreApplication application(argc, argv);
        return run(application);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "stemhaven-storm: %s\n", error.what());
        return 1;
    }
}
