#pragma once

#include <QAbstractListModel>
#include <QStringList>

/// One column of the browser: the keys of a level. The key "*" reads as "All" with the number of
/// the other keys, as in "All (3 Genre)".
class KeyListModel final : public QAbstractListModel
{
    Q_OBJECT
public:
    /// `level` is the word for one key: "Genre", "Artist" or "Album". It is the heading as well.
    explicit KeyListModel(const QString& level, QObject* parent = nullptr);

    void setKeys(const QStringList& keys);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    [[nodiscard]] QString all(int count) const;

    QString _level;
    QStringList _keys;
};
