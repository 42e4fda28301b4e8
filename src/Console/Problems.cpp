#include "Console/Problems.h"

#include "Console/Terminal.h"
#include "Device/Device.h"

Problems::Problems(Device& device, const QStringList& readers)
    : _device(device)
    , _readers(readers)
{
}

void Problems::sayNew()
{
    for (const auto& [reader, problem] : _device.problems()) {
        if (!_readers.contains(reader))
            continue;
        _saidLoss = _saidLoss || problem.kind == Problem::Kind::Lost;
        say(problem.text());
    }
    // A reader that never came to read has nothing to say.
    if (const std::optional<Failure> gone = _device.whyGone(); gone && !_saidLoss)
        say(gone->text());
}

void Problems::say(const QString& text)
{
    if (_said.contains(text))
        return;
    _said.append(text);
    Terminal::say(QStringLiteral("problem: ") + text);
}
