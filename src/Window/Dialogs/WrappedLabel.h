#pragma once

#include <QLabel>

/// Plain text that wraps anywhere: a path has no blanks to break at.
class WrappedLabel final : public QLabel
{
    Q_OBJECT
public:
    explicit WrappedLabel(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
