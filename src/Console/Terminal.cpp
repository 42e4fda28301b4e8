#include "Console/Terminal.h"

#include <QCoreApplication>
#include <QList>

#include <unistd.h>
#include <wchar.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>

namespace
{
/// Columns that a character takes; none for what does not print.
int columns(char32_t character)
{
    return std::max(0, wcwidth(wchar_t(character)));
}

/// Whether a character could steer a terminal, break a line, or turn or hide what stands beside
/// it. Names come from devices, and from people who mean no good.
bool isHarmful(char32_t character)
{
    constexpr char32_t NonJoiner = 0x200c;
    constexpr char32_t Joiner = 0x200d;
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Other_Format:
        return character != Joiner && character != NonJoiner; // words are spelled with these
    default:
        return false;
    }
}

/// The first error of standard output; 0 while there is none.
int outputError = 0;

QByteArray escaped(char32_t character)
{
    QByteArray escapes;
    for (const QChar unit : QString::fromUcs4(&character, 1))
        escapes += "\\u" + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
    return escapes;
}
} // namespace

void Terminal::print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    // What follows a gap would be taken for the whole.
    if (outputError != 0)
        return;
    if (std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout) <
        std::size_t(bytes.size()))
        outputError = errno;
}

void Terminal::printJson(const QByteArray& json)
{
    QString shown;
    for (const uint character : QString::fromUtf8(json).toUcs4()) {
        const auto drawn = char32_t(character);
        if (character != u'\n' && isHarmful(drawn)) // inside of texts, where escapes mean the same
            shown += QLatin1String(escaped(drawn));
        else
            shown += QString::fromUcs4(&drawn, 1);
    }
    print(shown);
}

Status Terminal::endOutput()
{
    if (outputError == 0 && std::fflush(stdout) != 0)
        outputError = errno;
    // Whoever reads the first lines only has what was wanted.
    if (outputError == 0 || outputError == EPIPE)
        return {};
    return Failure{Failure::Kind::Unwritable,
                   QCoreApplication::translate("Terminal", "Standard output could not be written"),
                   QString::fromLocal8Bit(std::strerror(outputError))};
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
    QString shown;
    shown.reserve(text.size());
    for (const uint character : text.toUcs4()) {
        const auto drawn = char32_t(character);
        if (isHarmful(drawn))
            shown += QChar(QChar::ReplacementCharacter);
        else
            shown += QString::fromUcs4(&drawn, 1);
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
