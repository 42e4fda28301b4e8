#pragma once

#include "Device/Section.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// The words that the console takes for what a device holds: the keys of the sections, and a few
/// of its own. Sections and words are taken in any case, with blanks, dashes or underscores.
namespace Categories
{
/// The sections that a library keeps an index of, in order.
std::vector<Section> ofLibrary();
/// The keys of all sections, in order.
QStringList names();
/// All that "export" takes as it stands: "all", "everything", "media" and the keys.
QStringList words();
/// A section by its key, however it is written.
std::optional<Section> section(const QString& word);

/// What one word of "export" asks for.
struct Wish {
    enum class Kind { Everything, Media, OneSection, Playlist, Album };

    Kind kind = Kind::Everything;
    Section section = Section::Music; ///< of OneSection
    QString name;                     ///< of a playlist or an album

    /// None when `export` takes no such word.
    static std::optional<Wish> of(const QString& word);
    /// The names of the readers that it asks, as problems call them.
    [[nodiscard]] QStringList readers() const;
};

/// The names of the readers that a section is read by.
QStringList readersOf(Section section);
} // namespace Categories
