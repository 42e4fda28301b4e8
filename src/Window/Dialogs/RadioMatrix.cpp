#include "Window/Dialogs/RadioMatrix.h"

#include <QButtonGroup>
#include <QRadioButton>
#include <QVBoxLayout>

RadioMatrix::RadioMatrix(const QStringList& labels, QWidget* parent)
    : QWidget(parent)
    , _buttons(new QButtonGroup(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const QString& label : labels) {
        auto* button = new QRadioButton(label);
        _buttons->addButton(button, int(_buttons->buttons().size()));
        layout->addWidget(button);
    }
    setSelectedRow(0);
}

int RadioMatrix::selectedRow() const
{
    return _buttons->checkedId();
}

void RadioMatrix::setSelectedRow(int row)
{
    if (QAbstractButton* button = _buttons->button(row))
        button->setChecked(true);
}

void RadioMatrix::disableRow(int row, const QString& reason)
{
    QAbstractButton* button = _buttons->button(row);
    button->setEnabled(false);
    button->setText(button->text() + QStringLiteral("\n") + reason);
}
