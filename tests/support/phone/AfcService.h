#pragma once

#include <QByteArray>
#include <QString>

#include <map>

class PhoneStream;
class SimulatedPhone;

/// A phone's file service on one connection: the files are those of a folder.
class AfcService
{
public:
    AfcService(SimulatedPhone& phone, PhoneStream& stream);
    ~AfcService();
    AfcService(const AfcService&) = delete;
    AfcService& operator=(const AfcService&) = delete;

    /// Answers until the connection ends.
    void serve();

private:
    struct Request {
        quint64 number = 0;
        quint64 operation = 0;
        QByteArray body; ///< the fixed part, then what follows it
        qsizetype fixedPart = 0;

        [[nodiscard]] quint64 value(qsizetype index) const;
        [[nodiscard]] QByteArray path(qsizetype offset = 0) const;
    };
    struct OpenFile {
        int descriptor = -1;
        QString path;
    };

    bool receive(Request& request);
    bool answer(const Request& request);
    bool misbehave();
    bool readDirectory(const Request& request);
    bool getFileInfo(const Request& request);
    bool openFile(const Request& request);
    bool readFile(const Request& request);
    bool seekFile(const Request& request);

    [[nodiscard]] quint64 refusalOf(const QByteArray& path) const;
    [[nodiscard]] QByteArray claimedSize(const QString& path) const;
    [[nodiscard]] QByteArray local(const QByteArray& path) const;
    bool sendStatus(const Request& request, quint64 status);
    bool sendErrno(const Request& request, bool succeeded);
    bool sendData(const Request& request, const QByteArray& data);
    bool send(const Request& request, quint64 operation, const QByteArray& fixed,
              const QByteArray& data);

    SimulatedPhone& _phone;
    PhoneStream& _stream;
    std::map<quint64, OpenFile> _files;
    quint64 _nextHandle = 1;
};
