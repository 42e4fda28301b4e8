#pragma once

#include <QDialog>

class QScrollArea;

/// A dialog that fits the screen at any scale: what it asks scrolls where the screen is too small
/// for it, while the buttons below always show.
class ScrollingDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ScrollingDialog(QWidget* parent = nullptr);

    void setVisible(bool visible) override;
    /// What it shows may come to need more room later: an answer of another program, a hint.
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    /// Fills the dialog. Call it once.
    void setParts(QWidget* content, QWidget* foot);

private:
    [[nodiscard]] QSize fittingSize() const;

    QScrollArea* _area;
};
