#include "Console/Terminal.h"

#include <QList>

#include <unistd.h>
#include <wchar.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>

namespace
{
/// Columns that a character takes; none for what does not print.
int columns(char32_t character)
{
    return std::max(0, wcwidth(wchar_t(character)));
}
} // namespace

void Terminal::print(const QString& text)
{
    print(text.toUtf8());
}

void Terminal::print(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

void Terminal::say(const QString& line)
{
    std::fprintf(stderr, "%s\n", harmless(line).toUtf8().constData());
}

bool Terminal::showsProgress()
{
    return isatty(STDERR_FILENO) != 0;
}

bool Terminal::canAsk()
{
    return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0;
}

QString Terminal::ask(const QString& question)
{
    std::fprintf(stderr, "%s ", question.toUtf8().constData());
    std::string line;
    if (!std::getline(std::cin, line))
        return {};
    return QString::fromStdString(line) + QLatin1String("");
}

QString Terminal::harmless(const QString& text)
{
    QString shown = text;
    for (QChar& character : shown) {
        if (character.category() == QChar::Other_Control)
            character = QChar::ReplacementCharacter;
    }
    return shown;
}

QString Terminal::field(const QString& text, int width)
{
    QString shown;
    int used = 0;
    for (const uint character : harmless(text).toUcs4()) {
        const auto drawn = char32_t(character);
        if (used + columns(drawn) > width - 2) {
            shown += QChar(u'…');
            ++used;
            break;
        }
        shown += QString::fromUcs4(&drawn, 1);
        used += columns(drawn);
    }
    return shown + QString(std::max(0, width - used), u' ');
}
