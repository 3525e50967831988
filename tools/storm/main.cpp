#include "NumberOption.h"
#include "StartLoop.h"
#include "Storm.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>
#include <exception>
#include <string>

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
        {QStringLiteral("starts"),
         QStringLiteral("Change next to nothing, but kill the program in its first second, so many times."),
         QStringLiteral("N")},
        {QStringLiteral("program"), QStringLiteral("The program, in place of the one built with this tool."),
         QStringLiteral("PATH"), QCoreApplication::applicationDirPath() + QStringLiteral("/stemhaven")},
        {QStringLiteral("keep"),
         QStringLiteral("Have the program log all that it does, and keep profile and library.")},
    });
}

/// The exit status of the tool once the trial, a storm or a loop of starts, has run.
template <typename Trial>
int statusOf(Trial& trial, const std::string& title) {
    try {
        trial.run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s:\n", title.c_str());
        for (std::size_t line = 0; line < trial.history().size(); ++line)
            std::fprintf(stderr, "%4zu %s\n", line + 1, trial.history()[line].c_str());
        std::fprintf(stderr, "stemhaven-storm: %s\n", error.what());
        return 1;
    }
    std::printf("%s\n", trial.summary().c_str());
    return 0;
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
    const std::string seed = "seed " + std::to_string(options.seed);
    if (parser.isSet(QStringLiteral("starts"))) {
        const int starts = numberOption(parser, QStringLiteral("starts"), 1);
        Storm::StartLoop loop(
            starts, options.seed, options.program, folder.path().toStdString(), options.detailedLog);
        return statusOf(loop, seed + ", " + std::to_string(starts) + " starts");
    }
    Storm::Storm storm(options, folder.path().toStdString());
    return statusOf(
        storm,
        seed + ", " + std::to_string(options.steps) + " steps, settling each " +
            std::to_string(options.settleEach));
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
