#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>

class Device;

/// Tells the person what a device's readers could not read, each thing once.
class Problems
{
public:
    /// Only those of the named readers matter. The device outlives the object.
    Problems(Device& device, const QStringList& readers);

    /// Says those that have come since the last time, one line each. They come while readers read.
    void sayNew();
    [[nodiscard]] std::size_t count() const { return std::size_t(_said.size()); }

private:
    void say(const QString& text);

    Device& _device;
    QStringList _readers;
    QStringList _said;
    bool _saidLoss = false;
};
