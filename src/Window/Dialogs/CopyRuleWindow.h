#pragma once

#include "Export/ClashRule.h"
#include "Window/Dialogs/ScrollingDialog.h"

#include <functional>
#include <optional>

class QCheckBox;
class QLabel;
class RadioMatrix;

/// Asks what to do about a file that exists already.
class CopyRuleWindow final : public ScrollingDialog
{
    Q_OBJECT
public:
    explicit CopyRuleWindow(QWidget* parent = nullptr);

    /// Shows the question, modally, with `rule` chosen, and deletes itself when it is closed.
    /// `reply` gets the answer, or none when the person gives up the whole export.
    void ask(const QString& path, int rule,
             const std::function<void(const std::optional<ClashAnswer>& answer)>& reply);

private:
    [[nodiscard]] std::optional<ClashAnswer> answer(int result) const;

    QLabel* _tfCopyRule;
    RadioMatrix* _mCopyRule1;
    QCheckBox* _btnAskLater;
};
