#pragma once

#include "support/PrivateBus.h"

#include <memory>
#include <vector>

/// A desktop for one test program alone: an X server without a screen, a window manager, and a
/// session bus. Start it before the application object; it ends with the object.
class Desktop
{
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

private:
    /// Starts a program that ends with this one, and gives the first line it prints.
    QByteArray start(const QString& program, const QStringList& arguments);

    PrivateBus _bus;
    std::vector<std::unique_ptr<QProcess>> _programs; ///< in the order they started
};
