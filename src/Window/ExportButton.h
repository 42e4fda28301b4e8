#pragma once

#include <QPushButton>

/// The button that starts an export and, while one runs, stops it. Nobody who presses it twice in
/// one go means both: the second press of a double click does nothing.
class ExportButton final : public QPushButton
{
    Q_OBJECT
public:
    using QPushButton::QPushButton;

    /// While `clicked` is told: whether it was the mouse.
    [[nodiscard]] bool isClickedByMouse() const { return _byMouse; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool _byMouse = false;
    quint64 _lastPress = 0; ///< by the clock of the mouse
};
