#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

class ExportReport;
struct ExportItem;

/// What became of a whole export, in few words: how many items were copied, how many were not and
/// why, and where they are.
class ExportSummary
{
    Q_DECLARE_TR_FUNCTIONS(ExportSummary)

public:
    /// Items that were not copied for one reason.
    struct Group {
        QString why;
        int count = 0;
    };

    explicit ExportSummary(const ExportReport& report);

    [[nodiscard]] int copied() const { return _copied; }
    [[nodiscard]] int skipped() const { return _skipped; }
    /// What the computer does not have now, whatever the reason.
    [[nodiscard]] int notCopied() const { return _notCopied; }
    [[nodiscard]] int total() const { return _copied + _skipped + _notCopied; }
    /// The reasons for what was not copied, the one of most items first.
    [[nodiscard]] const std::vector<Group>& groups() const { return _groups; }
    /// The deepest folder that all copied items lie in; null when none was copied, or they have
    /// none in common but the root.
    [[nodiscard]] const QString& folder() const { return _folder; }

    /// "12 items were copied.", "3 items were not copied:", ..., one sentence or reason a line.
    /// Of many reasons the ones of most items are named.
    [[nodiscard]] QStringList lines() const;

private:
    void count(const ExportItem& item);
    void lieIn(const QString& folder);

    int _copied = 0;
    int _skipped = 0;
    int _notCopied = 0;
    int _notHandedOver = 0;
    std::vector<Group> _groups;
    QString _folder;
    bool _lieApart = false;
};
