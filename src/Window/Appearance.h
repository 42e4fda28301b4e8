#pragma once

#include <QObject>
#include <QPalette>

class QDBusVariant;

/// Light or dark, as the desktop says. Where the toolkit has no theme of the desktop's own it
/// stays light whatever the person chose, so the desktop is asked, and heard when it changes.
class Appearance final : public QObject
{
    Q_OBJECT
public:
    /// Needs the application object.
    Appearance();

    static QPalette darkPalette();
    static void apply(bool dark);

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask();
};
