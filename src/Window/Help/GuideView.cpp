#include "Window/Help/GuideView.h"

#include "Window/Icons.h"

#include <QEvent>
#include <QFileInfo>
#include <QTextBlock>

#include <algorithm>

namespace
{
constexpr int IconSize = 20;
constexpr int Margin = 18;
const QString Address = QStringLiteral("guide:text");
const QColor MarkGround(0xff, 0xe0, 0x7a);
const QColor MarkText(0x20, 0x20, 0x20);
} // namespace

GuideView::GuideView(QWidget* parent)
    : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("_guide"));
    setAccessibleName(tr("Guide"));
    document()->setDocumentMargin(Margin);
    // Nothing but the guide is shown here, and no program is started from it.
    setOpenExternalLinks(false);
    setSource(QUrl(Address));
}

QVariant GuideView::loadResource(int type, const QUrl& name)
{
    if (type == QTextDocument::ImageResource) {
        // The text names its pictures by where they are for people who read it as a file.
        const QString icon = QFileInfo(name.path()).completeBaseName();
        return Icons::named(icon).pixmap(QSize(IconSize, IconSize), devicePixelRatioF());
    }
    return type == QTextDocument::HtmlResource && name.scheme() == u"guide"
               ? QVariant(_guide.html())
               : QVariant();
}

void GuideView::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        markHits();
}

void GuideView::showChapter(const QString& anchor)
{
    QUrl address(Address);
    address.setFragment(anchor);
    setSource(address);
    markHits();
}

void GuideView::search(const QString& text)
{
    _hits.clear();
    _hit = -1;
    const QTextCursor top = cursorForPosition(QPoint(0, 0));
    if (!text.isEmpty()) {
        for (QTextCursor found = document()->find(text, 0); !found.isNull();
             found = document()->find(text, found))
            _hits.append(found);
    }
    if (!_hits.isEmpty()) {
        const auto first = std::find_if(_hits.cbegin(), _hits.cend(), [&](const QTextCursor& hit) {
            return hit.position() >= top.position();
        });
        _hit = first == _hits.cend() ? 0 : int(first - _hits.cbegin());
    }
    goToHit(0);
}

void GuideView::goToHit(int step)
{
    if (!_hits.isEmpty()) {
        const int count = int(_hits.size());
        _hit = (_hit + step + count) % count;
        QTextCursor place = _hits[_hit];
        place.setPosition(place.selectionStart());
        setTextCursor(place); // goes there; the marks show what it is about
        ensureCursorVisible();
    }
    markHits();
    Q_EMIT hitsChanged();
}

void GuideView::markHits()
{
    QList<ExtraSelection> marks;
    for (int i = 0; i < int(_hits.size()); ++i) {
        ExtraSelection mark;
        mark.cursor = _hits[i];
        const bool current = i == _hit;
        mark.format.setBackground(current ? palette().highlight() : QBrush(MarkGround));
        mark.format.setForeground(current ? palette().highlightedText() : QBrush(MarkText));
        marks.append(mark);
    }
    setExtraSelections(marks);
}
