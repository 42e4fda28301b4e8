#pragma once

#include <QByteArray>

/// Looks at property lists before a parser that trusts them: it recurses as deeply as they nest,
/// and copies a binary list's shared objects for each reference, so that a few hundred bytes can
/// mean terabytes.
namespace PropertyListGuard
{
[[nodiscard]] bool isBinary(const QByteArray& bytes);

/// Whether a binary list is well-formed, nests within bounds and grows within bounds.
[[nodiscard]] bool isHarmlessBinary(const QByteArray& bytes);

/// An XML list written anew with nothing but its elements and their texts, so that two parsers
/// cannot take it for two things; empty when it is not well-formed or nests too deeply.
[[nodiscard]] QByteArray plainXml(const QByteArray& bytes);
} // namespace PropertyListGuard
