#include "Window/Update/VersionService.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace
{
const QString Operation = QStringLiteral("GetVersion3");
const QString ResultElement = QStringLiteral("GetVersion3Result");
const QString Soap = QStringLiteral("http://schemas.xmlsoap.org/soap/envelope/");
const QString Schema = QStringLiteral("http://www.w3.org/2001/XMLSchema");
const QString Instance = QStringLiteral("http://www.w3.org/2001/XMLSchema-instance");
constexpr qsizetype MostLetters = 100; ///< of a version that people are shown

struct Parameter {
    QString name;
    QString type;
    QString value;
};

/// Without what XML has no way to write; a computer's name may hold anything.
QString writable(QString text)
{
    text.removeIf([](QChar c) { return c < u' ' || c.isSurrogate() || c >= QChar(0xfffe); });
    return text;
}

QByteArray envelope(const QString& namespaceUri, const std::vector<Parameter>& parameters)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.writeStartDocument();
    xml.writeNamespace(Soap, QStringLiteral("soap"));
    xml.writeNamespace(Schema, QStringLiteral("xsd"));
    xml.writeNamespace(Instance, QStringLiteral("xsi"));
    xml.writeStartElement(Soap, QStringLiteral("Envelope"));
    xml.writeStartElement(Soap, QStringLiteral("Body"));
    xml.writeDefaultNamespace(namespaceUri);
    xml.writeStartElement(namespaceUri, Operation);
    for (const Parameter& parameter : parameters) {
        xml.writeStartElement(namespaceUri, parameter.name);
        xml.writeAttribute(Instance, QStringLiteral("type"), parameter.type);
        xml.writeCharacters(writable(parameter.value));
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return bytes;
}

/// What the service takes for the name of the operation.
QByteArray action(const QString& namespaceUri)
{
    const QString slash = namespaceUri.endsWith(u'/') ? QString() : QStringLiteral("/");
    return '"' + QString(namespaceUri + slash + Operation).toUtf8() + '"';
}
} // namespace

QString VersionService::getVersion(const QString& productName, const QString& usingVersion,
                                   const QString& pcName, int versionType,
                                   const QString& ipAddress) const
{
    const QString text = QStringLiteral("xsd:string");
    QNetworkRequest request(_addresses.endpoint);
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("text/xml; charset=utf-8"));
    request.setRawHeader("SOAPAction", action(_addresses.namespaceUri));
    return parseReply(
        _call.post(request, envelope(_addresses.namespaceUri,
                                     {{QStringLiteral("strSoftwareName"), text, productName},
                                      {QStringLiteral("strUsingVersion"), text, usingVersion},
                                      {QStringLiteral("strPCName"), text, pcName},
                                      {QStringLiteral("iVersionType"), QStringLiteral("xsd:int"),
                                       QString::number(versionType)},
                                      {QStringLiteral("strIPAddress"), text, ipAddress}})));
}

QString VersionService::parseReply(const QByteArray& reply)
{
    QXmlStreamReader xml(reply);
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            return {}; // an answer needs none, and they are how a text becomes another, or huge
        case QXmlStreamReader::StartElement:
            if (xml.name() == ResultElement) {
                const QString version = xml.readElementText();
                return xml.hasError() || version.isEmpty() || version.size() > MostLetters
                           ? QString()
                           : version;
            }
            break;
        default:
            break;
        }
    }
    return {};
}

QString VersionService::latestVersion(const QString& productName) const
{
    QUrl address;
    address.setScheme(QStringLiteral("http"));
    address.setAuthority(_addresses.pageHost);
    address.setPath(u'/' + QString(productName).replace(u' ', u'_') + QStringLiteral(".php"));
    const QByteArray body = _call.get(address);
    const bool isAscii =
        std::all_of(body.begin(), body.end(), [](char c) { return uchar(c) < 0x80; });
    return body.isEmpty() || !isAscii ? QString() : QString::fromLatin1(body);
}
