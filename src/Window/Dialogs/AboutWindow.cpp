#include "Window/Dialogs/AboutWindow.h"

#include "Base/Program.h"

#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace
{
constexpr double SmallText = 10;
constexpr QSize LogoSize(360, 96);

QLabel* makeLabel(const QString& name)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void setSmall(QLabel& label)
{
    QFont font = label.font();
    font.setPointSizeF(SmallText);
    label.setFont(font);
}
} // namespace

AboutWindow::AboutWindow(QWidget* parent)
    : ScrollingDialog(parent)
    , _ivLogo(makeLabel(QStringLiteral("_ivLogo")))
    , _tfProduct(makeLabel(QStringLiteral("_tfProduct")))
    , _tfVersion(makeLabel(QStringLiteral("_tfVersion")))
    , _tfCopyright(makeLabel(QStringLiteral("_tfCopyright")))
    , _tfBrand(makeLabel(QStringLiteral("_tfBrand")))
{
    setObjectName(QStringLiteral("_winAbout"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("About %1").arg(Program::briefName()));
    _ivLogo->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    _ivLogo->setAccessibleName(tr("Logo"));
    _tfBrand->setVisible(false);

    auto* buttons = new QDialogButtonBox;
    buttons->addButton(tr("&OK"), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &AboutWindow::endAbout);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(24, 24, 24, 8);
    layout->setSpacing(8);
    layout->addWidget(_ivLogo);
    layout->addSpacing(8);
    layout->addWidget(_tfProduct);
    layout->addWidget(_tfVersion);
    layout->addWidget(_tfBrand);
    layout->addWidget(_tfCopyright);
    layout->addStretch();
    buttons->setContentsMargins(24, 8, 24, 16);
    setParts(content, buttons);
}

void AboutWindow::showAbout()
{
    _tfBrand->setText(tr("Your media, back where they belong"));
    setSmall(*_tfBrand);
    QFont bold = _tfProduct->font();
    bold.setBold(true);
    _tfProduct->setFont(bold);
    _tfProduct->setText(Program::fullName());
    _tfVersion->setText(tr("Version %1").arg(Program::version()));
    setSmall(*_tfVersion);
    _tfCopyright->setText(Program::notice());
    setSmall(*_tfCopyright);
    _ivLogo->setPixmap(
        QIcon(QStringLiteral(":/brand/zell_logo.svg")).pixmap(LogoSize, devicePixelRatioF()));
    _tfBrand->setVisible(true);
    show();
}
