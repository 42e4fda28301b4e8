#include "Window/Help/Guide.h"

#include <QFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

namespace
{
constexpr int IconSize = 20;

/// A name for links: the letters of the heading, in lower case, joined by dashes.
QString anchorOf(const QString& heading)
{
    QString anchor;
    for (const QChar letter : heading.toLower()) {
        if (letter.isLetterOrNumber())
            anchor.append(letter);
        else if (!anchor.isEmpty() && !anchor.endsWith(u'-'))
            anchor.append(u'-');
    }
    return anchor;
}

void setAnchor(const QTextBlock& heading, const QString& anchor)
{
    QTextCursor cursor(heading);
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorNames({anchor});
    cursor.mergeCharFormat(format);
}

/// Pictures take their size from here, not from what the file says.
void setPictureSizes(const QTextBlock& block)
{
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextFragment fragment = part.fragment();
        if (!fragment.charFormat().isImageFormat())
            continue;
        QTextImageFormat picture = fragment.charFormat().toImageFormat();
        picture.setWidth(IconSize);
        picture.setHeight(IconSize);
        QTextCursor cursor(block);
        cursor.setPosition(fragment.position());
        cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
        cursor.setCharFormat(picture);
        return; // the walk ends with a change; no cell has two pictures
    }
}

void setTable(QTextTable& table)
{
    QTextTableFormat format = table.format();
    format.setBorderStyle(QTextFrameFormat::BorderStyle_None);
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(4);
    table.setFormat(format);
}
} // namespace

Guide::Guide()
{
    QFile file(QStringLiteral(":/help/help.md"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    QTextDocument text;
    text.setMarkdown(QString::fromUtf8(file.readAll()), QTextDocument::MarkdownDialectGitHub);
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level > 1) {
            const Chapter chapter{block.text(), anchorOf(block.text()), level};
            setAnchor(block, chapter.anchor);
            _chapters.append(chapter);
        }
        setPictureSizes(block);
    }
    for (QTextFrame* frame : text.rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame))
            setTable(*table);
    }
    _html = text.toHtml();
}
