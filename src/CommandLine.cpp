#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>

#include <algorithm>
#include <cstdio>

namespace {

/// Of a window, in pixels. A larger one would be drawn for minutes.
constexpr int longestSide = 8192;

const QString screenshotOption = QStringLiteral("screenshot");
const QString sizeOption = QStringLiteral("size");
const QString colorSchemeOption = QStringLiteral("color-scheme");
const QString exportOption = QStringLiteral("export-backup");
const QString importOption = QStringLiteral("import-backup");
const QString recoverOption = QStringLiteral("recover");
const QString dryRunOption = QStringLiteral("dry-run");
const QString yesOption = QStringLiteral("yes");

QString dashed(const QString& option) {
    return QStringLiteral("--") + option;
}

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(QStringLiteral("Keeps a catalogue of your Logic Pro projects."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(
        {screenshotOption, "Write a picture of the main window to <file> once its table has rows, then quit.",
         "file"});
    parser.addOption(
        {colorSchemeOption, "Light or dark whatever the desktop wishes: <scheme> is light or dark.",
         "scheme"});
    parser.addOption(
        {exportOption, "Write a backup of the catalogue and the settings into <folder>, without a window.",
         "folder"});
    parser.addOption(
        {importOption,
         "Replace the catalogue and the settings by those of the backup <file>, without a window.", "file"});
    parser.addOption(
        {recoverOption,
         "Find damaged projects in the watched folders, and repair them after a question, without a "
         "window."});
    parser.addOption({dryRunOption, "With --recover: list the damaged projects and change nothing."});
    parser.addOption({yesOption, "Answer the question before an import or a repair with Yes."});
    parser.addOption({sizeOption, "Size of the main window in that picture, for example 1200x760.", "WxH"});
}

/// What cannot be written is refused before there is a window.
bool isNameOfPicture(const QString& file) {
    const QByteArray format = QFileInfo(file).suffix().toLower().toUtf8();
    return QImageWriter::supportedImageFormats().contains(format);
}

auto givenCount(const QCommandLineParser& parser, const QStringList& options) {
    return std::count_if(
        options.begin(), options.end(), [&](const QString& option) { return parser.isSet(option); });
}

std::optional<QSize> sizeFrom(const QString& text) {
    const auto parts = text.split(QLatin1Char('x'));
    const QSize size = parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
    const bool isPossible = !size.isEmpty() && size.width() <= longestSide && size.height() <= longestSide;
    return isPossible ? std::optional(size) : std::nullopt;
}

/// Null for what is no colour scheme.
std::optional<Stemhaven::ColorScheme> colorSchemeFrom(const QString& text) {
    if (text == QLatin1String("light"))
        return Stemhaven::ColorScheme::Light;
    if (text == QLatin1String("dark"))
        return Stemhaven::ColorScheme::Dark;
    return std::nullopt;
}

} // namespace

bool CommandLine::printText(int argc, char** argv) {
    // An application object without a display leaves Qt's options where they are, and the parser would take
    // them for mistakes. So it sees nothing but the option that asks for the text.
    const QStringList textOptions = {
        QStringLiteral("--help"), QStringLiteral("-h"), QStringLiteral("--help-all"),
        QStringLiteral("--version"), QStringLiteral("-v")};
    char** const end = argv + argc;
    char** const option = std::find_if(
        argv, end, [&](const char* argument) { return textOptions.contains(QLatin1String(argument)); });
    if (option == end)
        return false;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    describe(parser);
    parser.process({QString::fromLocal8Bit(argv[0]), QString::fromLocal8Bit(*option)});
    return true;
}

bool CommandLine::asksForNoWindow(int argc, char** argv) {
    return std::any_of(argv + 1, argv + argc, [](const char* argument) {
        const QString text = QString::fromLocal8Bit(argument).section(QLatin1Char('='), 0, 0);
        return text == dashed(exportOption) || text == dashed(importOption) || text == dashed(recoverOption);
    });
}

std::optional<CommandLine> CommandLine::parse() {
    QCommandLineParser parser;
    describe(parser);
    parser.process(QCoreApplication::arguments());
    CommandLine commandLine;
    commandLine.screenshot = parser.value(screenshotOption);
    if (parser.isSet(screenshotOption) && !isNameOfPicture(commandLine.screenshot)) {
        std::fputs(
            "--screenshot wants a file whose name ends in a format of pictures, for example "
            "window.png.\n",
            stderr);
        return std::nullopt;
    }
    commandLine.size = sizeFrom(parser.value(sizeOption));
    if (parser.isSet(sizeOption) && !commandLine.size) {
        std::fprintf(
            stderr, "--size wants a width and a height of at most %d, for example 1200x760.\n", longestSide);
        return std::nullopt;
    }
    commandLine.colorScheme = colorSchemeFrom(parser.value(colorSchemeOption));
    if (parser.isSet(colorSchemeOption) && !commandLine.colorScheme) {
        std::fputs("--color-scheme wants light or dark.\n", stderr);
        return std::nullopt;
    }
    commandLine.exportBackup = parser.value(exportOption);
    commandLine.importBackup = parser.value(importOption);
    commandLine.recover = parser.isSet(recoverOption);
    commandLine.dryRun = parser.isSet(dryRunOption);
    commandLine.yes = parser.isSet(yesOption);
    if (givenCount(parser, {exportOption, importOption, recoverOption}) > 1) {
        std::fputs("--export-backup, --import-backup and --recover are commands of their own.\n", stderr);
        return std::nullopt;
    }
    // An import that somebody thinks to be a trial must not happen.
    if (commandLine.dryRun && !commandLine.recover) {
        std::fputs("--dry-run is for --recover.\n", stderr);
        return std::nullopt;
    }
    return commandLine;
}
