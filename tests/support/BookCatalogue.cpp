#include "support/BookCatalogue.h"

#include <QStringList>

#include <plist/plist.h>

#include <cstdlib>

QByteArray BookCatalogue::xml(const QByteArray& root)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
)" + root + "\n</plist>\n";
}

QByteArray BookCatalogue::binary(const QByteArray& xml)
{
    plist_t list = nullptr;
    plist_from_xml(xml.constData(), std::uint32_t(xml.size()), &list);
    char* bytes = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(list, &bytes, &size);
    const QByteArray result(bytes, qsizetype(size));
    std::free(bytes);
    plist_free(list);
    return result;
}

QByteArray BookCatalogue::write(const std::vector<std::vector<Book>>& groups, Form form)
{
    QByteArray root = "<dict>\n";
    int group = 0;
    for (const std::vector<Book>& books : groups) {
        root += "<key>Group " + QByteArray::number(++group) + "</key><array>\n";
        for (const Book& book : books) {
            root += "<dict><key>Is Protected</key><false/><key>Page</key><integer>12</integer>"
                    "<key>Cover</key><data>AAECAw==</data>"
                    "<key>Added</key><date>2010-07-01T10:10:10Z</date>";
            QStringList keys = book.keys();
            keys.sort();
            for (const QString& key : keys)
                root += "<key>" + key.toHtmlEscaped().toUtf8() + "</key><string>" +
                        book[key].toHtmlEscaped().toUtf8() + "</string>";
            root += "</dict>\n";
        }
        root += "</array>\n";
    }
    const QByteArray text = xml(root + "</dict>");
    return form == Form::Xml ? text : binary(text);
}
