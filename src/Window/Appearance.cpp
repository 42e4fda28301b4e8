#include "Window/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStyle>

namespace
{
const QString Service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString Path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString Interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString Group = QStringLiteral("org.freedesktop.appearance");
const QString Key = QStringLiteral("color-scheme");
constexpr uint PrefersDark = 1;
constexpr int TimeLimitMilliseconds = 3000;

/// The answer is a variant, in some versions within another one.
uint schemeOf(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}
} // namespace

Appearance::Appearance()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || isDark(QApplication::palette()))
        return;
    bus.connect(Service, Path, Interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask();
}

void Appearance::ask()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(Service, Path, Interface, QStringLiteral("Read"));
    call.setArguments({Group, Key});
    auto* watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, TimeLimitMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher] {
        const QDBusPendingReply<QVariant> reply = *watcher;
        if (!reply.isError())
            apply(schemeOf(reply.value()) == PrefersDark);
        watcher->deleteLater();
    });
}

void Appearance::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == Group && key == Key)
        apply(schemeOf(value.variant()) == PrefersDark);
}

void Appearance::apply(bool dark)
{
    QApplication::setPalette(dark ? darkPalette() : QApplication::style()->standardPalette());
}

QPalette Appearance::darkPalette()
{
    const QColor window(0x2b, 0x2d, 0x31);
    const QColor base(0x1f, 0x21, 0x24);
    const QColor text(0xe8, 0xe8, 0xea);
    const QColor faint(0x86, 0x88, 0x8c);
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2b));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(0x3a, 0x3d, 0x42));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3d, 0x42));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x7d, 0xd1));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xf7));
    palette.setColor(QPalette::Mid, QColor(0x1a, 0x1c, 0x1f));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}
