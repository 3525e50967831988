#include "app/logging/PrintableText.h"

#include <algorithm>

namespace Logging {

namespace {

bool isDeceptive(QChar character) {
    const char16_t code = character.unicode();
    constexpr char16_t firstVisible = 0x20;
    constexpr char16_t firstOfDeleteAndC1 = 0x7f;
    constexpr char16_t lastOfDeleteAndC1 = 0x9f;
    if (code < firstVisible)
        return code != u'\t';
    if (code >= firstOfDeleteAndC1 && code <= lastOfDeleteAndC1)
        return true;
    // Separators of lines and paragraphs, embeddings, overrides and isolates of a direction.
    return (code >= u'\u2028' && code <= u'\u202e') || (code >= u'\u2066' && code <= u'\u2069');
}

QString escaped(QChar character) {
    switch (character.unicode()) {
    case u'\n':
        return QStringLiteral("\\n");
    case u'\r':
        return QStringLiteral("\\r");
    default:
        return QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
}

} // namespace

QString printable(const QString& text, LineBreaks lineBreaks) {
    const auto isEscaped = [lineBreaks](QChar character) {
        return isDeceptive(character) && (lineBreaks == LineBreaks::Escape || character != u'\n');
    };
    if (std::none_of(text.begin(), text.end(), isEscaped))
        return text;
    QString result;
    for (const QChar character : text) {
        if (isEscaped(character))
            result += escaped(character);
        else
            result += character;
    }
    return result;
}

void printLine(std::FILE* stream, const QString& text) {
    const QByteArray bytes = printable(text, LineBreaks::Keep).toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace Logging
