#pragma once

#include <QTemporaryDir>

/// Where a test program runs: with a home of its own that is removed at the end, where it sees no
/// player, phone, message bus or screen of this computer, and nobody sees what it mounts. Make it
/// before any thread starts.
class TestPlace
{
public:
    TestPlace();
    ~TestPlace() = default;
    TestPlace(const TestPlace&) = delete;
    TestPlace& operator=(const TestPlace&) = delete;

private:
    void useFolder(const char* variable, const char* folder) const;
    void useNobody(const char* variable, const char* socket) const;

    QTemporaryDir _home;
};
