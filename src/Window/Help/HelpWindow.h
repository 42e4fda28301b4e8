#pragma once

#include <QWidget>

class GuideView;
class QLabel;
class QLineEdit;
class QListWidget;
class QToolButton;

/// The user's guide in a window of its own, beside the main one: its chapters, the text, a search.
class HelpWindow final : public QWidget
{
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent = nullptr);

    /// Shows the guide in front of `window`: the one that is open already, or a new one, which
    /// deletes itself when it is closed.
    static HelpWindow* showFor(QWidget& window);

    /// Searches as if the text were typed into the search field.
    void search(const QString& text);

private:
    QWidget* makeHeader();
    QToolButton* makeButton(const QString& name, const QString& text, QStringView sign);
    void fillChapters();
    void setShortcuts();
    void showHits();
    void escape();

    GuideView* _guide;
    QListWidget* _chapters;
    QLineEdit* _search;
    QLabel* _hits;
};
