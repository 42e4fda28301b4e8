#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <mutex>
#include <thread>
#include <vector>

/// A mounted volume that shows a folder of the computer and fails as a test says: a real file
/// system of the kernel's, whose answers come from this process. Needs private mounts.
class SickVolume
{
public:
    /// Mounts at `path`; throws std::system_error.
    SickVolume(const QString& folder, const QString& path);
    ~SickVolume();
    SickVolume(const SickVolume&) = delete;
    SickVolume& operator=(const SickVolume&) = delete;

    /// From now on, reading the file of this name (below the folder) fails at and after `offset`.
    void failReads(const QString& name, int errorNumber, qint64 offset = 0);
    /// From now on, nobody can tell what stands at the name.
    void failLookUps(const QString& name, int errorNumber);
    /// Lets so many questions of the kernel pass; all that follow fail.
    void failAfter(int questions, int errorNumber);
    /// The questions so far.
    [[nodiscard]] int questions();
    /// Ends the answers, as when a driver dies: all calls fail, and the volume stays mounted.
    void die();

private:
    struct Fault {
        int errorNumber = 0;
        qint64 offset = 0;
    };

    void serve();
    void answer(const QByteArray& request);
    /// What a question is answered with, or an error.
    QByteArray body(quint32 opcode, const QByteArray& request, int& error);
    /// Counts a question; the error that it is answered with, or 0.
    int errorOfNext();
    QByteArray lookUp(const QByteArray& name, int& error);
    QByteArray attributes(int& error);
    QByteArray entries(const QByteArray& request);
    QByteArray bytes(const QByteArray& request, int& error);
    /// The number by which the kernel knows a path.
    quint64 nodeOf(const QString& name);
    [[nodiscard]] QString pathOf(const QString& name) const;
    Fault faultOf(const QHash<QString, Fault>& faults, const QString& name);

    QString _folder;
    QString _mountPath;
    int _connection = -1;
    int _stop = -1;
    std::vector<QString> _names; ///< of the nodes, from node 1 on; the first is the folder
    QString _name;               ///< of the node that the kernel asks about
    std::mutex _mutex;           ///< guards the faults
    QHash<QString, Fault> _readFaults;
    QHash<QString, Fault> _lookUpFaults;
    int _questions = 0;
    int _questionsAllowed = -1; ///< no limit
    int _errorOfAll = 0;
    std::thread _server;
};
