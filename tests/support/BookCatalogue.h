#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

/// Writes book catalogues: property lists as phones keep them.
namespace BookCatalogue
{
using Book = QHash<QString, QString>; ///< "Name", "Artist", "Album", "Genre", "Path"

enum class Form { Xml, Binary };

/// A list with one key of the root for each group of books. Each book has some keys besides,
/// of other kinds than texts, that no reader of ours looks at.
QByteArray write(const std::vector<std::vector<Book>>& groups, Form form = Form::Xml);
/// XML around the content of a root.
QByteArray xml(const QByteArray& root);
/// Any XML list in the binary form.
QByteArray binary(const QByteArray& xml);
} // namespace BookCatalogue
