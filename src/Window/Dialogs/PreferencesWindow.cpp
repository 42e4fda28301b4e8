#include "Window/Dialogs/PreferencesWindow.h"

#include "Export/ClashRule.h"
#include "Window/Dialogs/Alert.h"
#include "Window/Dialogs/RadioMatrix.h"
#include "Window/Icons.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int FieldWidth = 420;

/// In the order of the sections.
constexpr std::array<const char*, Sections::Count> FieldNames = {
    "_tfMusic", "_tfMovies",    "_tfTVShows",    "_tfPodcasts",   "_tfAudiobooks", "_tfRingtones",
    "_tfBooks", "_tfPlaylists", "_tfVoiceMemos", "_tfCameraRoll", "_tfPhotos"};
} // namespace

PreferencesWindow::PreferencesWindow(Config& config, bool canCheckVersion, QWidget* parent)
    : ScrollingDialog(parent)
    , _config(config)
    , _mCopyRule(new RadioMatrix({tr("&Ask each time"), tr("&Keep both, under a numbered name"),
                                  tr("&Overwrite the file that is there"), tr("&Skip the item")}))
    , _btnCheckVersion(new QCheckBox(tr("Check for a &new version at start")))
    , _hint(new QLabel)
{
    setObjectName(QStringLiteral("_winPref"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Preferences"));

    auto* folders = new QGroupBox(tr("Export folders"));
    auto* grid = new QGridLayout(folders);
    grid->setColumnStretch(2, 1);
    for (int i = 0; i < int(Sections::Count); ++i) {
        const QString name = Sections::folderName(Section(i));
        auto* field = new QLineEdit;
        field->setObjectName(QString::fromLatin1(FieldNames[std::size_t(i)]));
        field->setAccessibleName(tr("Folder for %1").arg(name));
        field->setMinimumWidth(FieldWidth);
        connect(field, &QLineEdit::textChanged, this, &PreferencesWindow::validate);
        auto* icon = new QLabel;
        icon->setPixmap(
            Icons::named(Sections::icon(Section(i))).pixmap(QSize(20, 20), devicePixelRatioF()));
        auto* label = new QLabel(name + u':');
        label->setBuddy(field);
        auto* choose = new QToolButton;
        choose->setObjectName(QStringLiteral("_btnChoose%1").arg(i + 1));
        choose->setIcon(Icons::named(QStringLiteral("folder")));
        choose->setToolTip(tr("Choose the folder for %1").arg(name));
        choose->setAccessibleName(choose->toolTip());
        connect(choose, &QToolButton::clicked, this, [this, i] { selectBackupFolder(i + 1); });
        grid->addWidget(icon, i, 0);
        grid->addWidget(label, i, 1);
        grid->addWidget(field, i, 2);
        grid->addWidget(choose, i, 3);
        _fields[std::size_t(i)] = field;
    }

    auto* rule = new QGroupBox(tr("When a file exists already"));
    _mCopyRule->setObjectName(QStringLiteral("_mCopyRule"));
    _mCopyRule->setAccessibleName(rule->title());
    (new QVBoxLayout(rule))->addWidget(_mCopyRule);

    setUpSwitch(canCheckVersion);

    auto* buttons = new QDialogButtonBox;
    _done = buttons->addButton(tr("&Done"), QDialogButtonBox::AcceptRole);
    _done->setDefault(true);
    buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &PreferencesWindow::endPref);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* foot = new QWidget;
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(16, 4, 16, 12);
    row->addWidget(_hint, 1);
    row->addWidget(buttons);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(16, 16, 16, 8);
    layout->setSpacing(12);
    layout->addWidget(folders);
    layout->addWidget(rule);
    layout->addWidget(_btnCheckVersion);
    setParts(content, foot);
}

void PreferencesWindow::setUpSwitch(bool canCheckVersion)
{
    _btnCheckVersion->setObjectName(QStringLiteral("_btnCheckVersion"));
    _btnCheckVersion->setEnabled(canCheckVersion);
    const QString why =
        canCheckVersion ? tr("Asks the makers' web service once, whenever the program starts")
                        : tr("This copy of the program was built without an address to ask, so it "
                             "never asks anybody");
    _btnCheckVersion->setToolTip(why);
    _btnCheckVersion->setAccessibleDescription(why);
}

int PreferencesWindow::rowOfRule() const
{
    // Any other number overwrites as well.
    const int rule = _config.copyRule();
    return rule >= AskRule && rule <= SkipRule ? rule : OverwriteRule;
}

void PreferencesWindow::showPref()
{
    for (std::size_t i = 0; i < Sections::Count; ++i) {
        _shownFolders[i] = _config.existingFolder(Section(i));
        _fields[i]->setText(_shownFolders[i]);
    }
    _shownRow = rowOfRule();
    _mCopyRule->setSelectedRow(_shownRow);
    _shownCheck = _config.checkVersion();
    _btnCheckVersion->setChecked(_shownCheck);
    _fields[0]->setFocus();
    show();
}

void PreferencesWindow::endPref()
{
    // The question about a file that is there may have been answered, and its answer remembered,
    // since the window came up: what nobody touched here is not ours to store.
    for (std::size_t i = 0; i < Sections::Count; ++i) {
        if (_fields[i]->text() != _shownFolders[i])
            _config.setFolderPath(Section(i), _fields[i]->text());
    }
    if (_mCopyRule->selectedRow() != _shownRow)
        _config.setCopyRule(_mCopyRule->selectedRow());
    if (_btnCheckVersion->isChecked() != _shownCheck)
        _config.setCheckVersion(_btnCheckVersion->isChecked());
    const Status saved = _config.save();
    accept();
    if (QWidget* above = parentWidget())
        Alert::showFailure(*above, QStringLiteral("_alertSettings"), saved);
}

void PreferencesWindow::selectBackupFolder(int tag)
{
    QLineEdit* field =
        tag >= 1 && tag <= int(Sections::Count) ? _fields[std::size_t(tag - 1)] : nullptr;
    if (!field)
        return;
    const QString chosen =
        QFileDialog::getExistingDirectory(this, tr("Choose a folder"), field->text());
    if (!chosen.isEmpty())
        field->setText(chosen);
}

void PreferencesWindow::validate()
{
    // A relative path would lead to wherever the program happened to be started.
    const bool allAbsolute = std::all_of(_fields.begin(), _fields.end(), [](QLineEdit* field) {
        return !field || QDir::isAbsolutePath(field->text());
    });
    _done->setEnabled(allAbsolute);
    _hint->setText(allAbsolute ? QString() : tr("Each folder needs a full path."));
}
