#pragma once

#include <QStringList>
#include <QWidget>

class QButtonGroup;
class QLabel;

/// A column of choices of which one holds, known by its row.
class RadioMatrix final : public QWidget
{
    Q_OBJECT
public:
    explicit RadioMatrix(const QStringList& labels, QWidget* parent = nullptr);

    [[nodiscard]] int selectedRow() const;
    void setSelectedRow(int row);
    /// A row that cannot be chosen now, with the reason shown below it.
    void disableRow(int row, const QString& reason);

private:
    QButtonGroup* _buttons;
};
