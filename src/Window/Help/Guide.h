#pragma once

#include <QList>
#include <QString>

/// The user's guide that comes within the program.
class Guide
{
public:
    struct Chapter {
        QString title;
        QString anchor;
        int level; ///< 2 for a chapter, 3 for a part of one
    };

    /// Reads the guide.
    Guide();

    /// The text, with an anchor at each heading.
    [[nodiscard]] const QString& html() const { return _html; }
    /// In the order of the text.
    [[nodiscard]] const QList<Chapter>& chapters() const { return _chapters; }

private:
    QString _html;
    QList<Chapter> _chapters;
};
