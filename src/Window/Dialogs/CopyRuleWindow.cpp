#include "Window/Dialogs/CopyRuleWindow.h"

#include "Base/Program.h"
#include "Window/Dialogs/RadioMatrix.h"
#include "Window/Dialogs/WrappedLabel.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

CopyRuleWindow::CopyRuleWindow(QWidget* parent)
    : ScrollingDialog(parent)
    , _tfCopyRule(new WrappedLabel)
    , _mCopyRule1(new RadioMatrix({tr("&Keep both: give the new file a numbered name"),
                                   tr("&Overwrite the file that is there"), tr("&Skip this item")}))
    , _btnAskLater(new QCheckBox(tr("&Do not ask again, and remember this as my rule")))
{
    setObjectName(QStringLiteral("_winCopyRule"));
    setWindowTitle(Program::briefName());
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    _tfCopyRule->setObjectName(QStringLiteral("_tfCopyRule"));
    _mCopyRule1->setObjectName(QStringLiteral("_mCopyRule1"));
    _mCopyRule1->setAccessibleName(tr("What to do"));
    _btnAskLater->setObjectName(QStringLiteral("_btnAskLater"));

    auto* buttons = new QDialogButtonBox;
    QPushButton* goOn = buttons->addButton(tr("&Continue"), QDialogButtonBox::AcceptRole);
    goOn->setDefault(true);
    buttons->addButton(tr("C&ancel Export"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(20, 20, 20, 8);
    layout->setSpacing(14);
    layout->addWidget(_tfCopyRule);
    layout->addWidget(_mCopyRule1);
    layout->addWidget(_btnAskLater);
    layout->addStretch();
    buttons->setContentsMargins(20, 6, 20, 16);
    setParts(content, buttons);
}

void CopyRuleWindow::ask(const QString& path, int rule,
                         const std::function<void(const std::optional<ClashAnswer>& answer)>& reply)
{
    _tfCopyRule->setText(ClashRule::question(path));
    _mCopyRule1->setSelectedRow(rule - 1);
    connect(this, &QDialog::finished, this, [this, reply](int result) { reply(answer(result)); });
    show();
}

std::optional<ClashAnswer> CopyRuleWindow::answer(int result) const
{
    if (result != Accepted)
        return std::nullopt;
    // The rows leave out the rule "ask", which is 0.
    return ClashAnswer{_mCopyRule1->selectedRow() + 1, _btnAskLater->isChecked()};
}
