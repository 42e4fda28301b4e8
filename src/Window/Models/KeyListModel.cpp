#include "Window/Models/KeyListModel.h"

#include "Base/StarOrder.h"
#include "Window/ShownText.h"

KeyListModel::KeyListModel(const QString& level, QObject* parent)
    : QAbstractListModel(parent)
    , _level(level)
{
}

void KeyListModel::setKeys(const QStringList& keys)
{
    beginResetModel();
    _keys = keys;
    endResetModel();
}

int KeyListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(_keys.size());
}

QVariant KeyListModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString& key = _keys.at(index.row());
    if (key == StarOrder::Star)
        return all(int(_keys.size()) - 1);
    return ShownText::of(key);
}

QVariant KeyListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section != 0 || orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return _level;
}

QString KeyListModel::all(int count) const
{
    // The texts are fixed, with the word for one key; the catalogues have plurals.
    if (_level == u"Genre")
        return tr("All (%n Genre)", nullptr, count);
    if (_level == u"Artist")
        return tr("All (%n Artist)", nullptr, count);
    return tr("All (%n Album)", nullptr, count);
}
