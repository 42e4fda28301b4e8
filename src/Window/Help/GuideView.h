#pragma once

#include "Window/Help/Guide.h"

#include <QTextBrowser>

/// Shows the guide; it keeps a history, so that people find back from where a link led them.
class GuideView final : public QTextBrowser
{
    Q_OBJECT
public:
    explicit GuideView(QWidget* parent = nullptr);

    [[nodiscard]] const Guide& guide() const { return _guide; }
    /// Goes to a heading.
    void showChapter(const QString& anchor);

    /// Marks each place that holds the text, without case, and goes to the first at or behind
    /// where the view is. An empty text marks nothing.
    void search(const QString& text);
    /// From one place to the next or the one before, around the ends.
    void goToHit(int step);
    [[nodiscard]] int hitCount() const { return int(_hits.size()); }
    /// The place where the view is, counted from 1; 0 without any.
    [[nodiscard]] int currentHit() const { return _hit + 1; }

Q_SIGNALS:
    void hitsChanged();

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void changeEvent(QEvent* event) override;

private:
    void markHits();

    Guide _guide;
    QList<QTextCursor> _hits;
    int _hit = -1;
};
