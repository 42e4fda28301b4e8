#pragma once

class QLocale;

/// The catalogues of texts that the programs bring along.
namespace Translations
{
/// From now on texts are looked up in the catalogue of the locale's language; false, and texts
/// stay as they stand in the sources, where there is none. English has one: some texts are fixed
/// and not as people write them, and counts have plurals. Needs the application object.
bool install(const QLocale& locale);
} // namespace Translations
