#pragma once

class QMenu;

/// The underlined letters of a menu.
namespace Mnemonics
{
/// Gives each item without one the first letter of its text that no other item has, for names
/// that are made elsewhere.
void complete(const QMenu& menu);
} // namespace Mnemonics
