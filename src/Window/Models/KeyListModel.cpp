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
        return QStringLiteral("All (%1 %2)").arg(_keys.size() - 1).arg(_level);
    return ShownText::of(key);
}

QVariant KeyListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section != 0 || orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return _level;
}
