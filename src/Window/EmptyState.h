#pragma once

#include <QWidget>

/// What the window shows without a device: what to do, and what happens then.
class EmptyState final : public QWidget
{
    Q_OBJECT
public:
    explicit EmptyState(QWidget* parent = nullptr);

Q_SIGNALS:
    void helpClicked();
};
