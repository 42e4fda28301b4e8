#pragma once

#include <QString>

/// Words to the person and results to whoever reads them.
namespace Terminal
{
/// Results: standard output.
void print(const QString& text);
void print(const QByteArray& bytes);
/// Everything else, as one harmless line: standard error.
void say(const QString& line);

/// Whether a person sees standard error as it is written.
bool showsProgress();
/// Whether a person can be asked: both ends are a terminal.
bool canAsk();
/// Asks and gives the line that was typed, without its end; null at the end of input.
QString ask(const QString& question);

/// The text with what could steer a terminal or break a line made visible instead: names come
/// from devices.
QString harmless(const QString& text);

/// The text in a field of `width` columns, cut or filled up. Knows that CJK letters take two
/// columns and combining marks none. Harmless.
QString field(const QString& text, int width);
} // namespace Terminal
