#pragma once

#include "Base/Expected.h"

#include <QString>

/// Words to the person and results to whoever reads them.
namespace Terminal
{
/// Results: standard output.
void print(const QString& text);
/// The same for JSON, whose texts are escaped as far as they could harm a terminal.
void printJson(const QByteArray& json);
/// Ends the results: why they could not all be written. One who stopped reading is no reason.
[[nodiscard]] Status endOutput();
/// Everything else, as one harmless line: standard error.
void say(const QString& line);

/// Whether a person sees standard error as it is written.
bool showsProgress();
/// Whether a person can be asked: both ends are a terminal.
bool canAsk();
/// Asks and gives the line that was typed, without its end; null at the end of input.
QString ask(const QString& question);

/// The text with what could steer a terminal, break a line, or turn or hide its neighbours made
/// visible instead: names come from devices.
QString harmless(const QString& text);

/// The text in a field of `width` columns, cut or filled up. Knows that CJK letters take two
/// columns and combining marks none. Harmless.
QString field(const QString& text, int width);
} // namespace Terminal
