#pragma once

#include "Window/Dialogs/ScrollingDialog.h"

class QLabel;

/// What the program is, and which version.
class AboutWindow final : public ScrollingDialog
{
    Q_OBJECT
public:
    explicit AboutWindow(QWidget* parent = nullptr);

    /// Shows the box, modally; it deletes itself when it is closed.
    void showAbout();

public Q_SLOTS:
    void endAbout() { accept(); }

private:
    QLabel* _ivLogo;
    QLabel* _tfProduct;
    QLabel* _tfVersion;
    QLabel* _tfCopyright;
    QLabel* _tfBrand;
};
