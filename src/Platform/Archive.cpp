#include "Platform/Archive.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <zip.h>

#include <algorithm>
#include <memory>

namespace
{
/// What an EPUB's own file type stands in; readers look for it at a fixed place.
const QString TypeFile = QStringLiteral("mimetype");

/// An archive being written; what was not committed leaves nothing behind.
struct Discard {
    void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
};
using Writer = std::unique_ptr<zip_t, Discard>;

Failure failed(zip_error_t* error)
{
    return {Failure::Kind::Unwritable,
            QCoreApplication::translate("Archive", "The folder could not be packed"),
            QString::fromUtf8(zip_error_strerror(error))};
}

bool addFolder(zip_t* archive, const QString& name)
{
    return zip_dir_add(archive, name.toUtf8().constData(), ZIP_FL_ENC_UTF_8) >= 0;
}

bool addFile(zip_t* archive, const QString& path, const QString& name, bool compressed)
{
    zip_source_t* source = zip_source_file(archive, QFile::encodeName(path).constData(), 0, -1);
    if (!source)
        return false;
    const zip_int64_t index =
        zip_file_add(archive, name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    return zip_set_file_compression(archive, zip_uint64_t(index),
                                    compressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0) == 0;
}

/// Adds what a folder holds, under names that begin with `prefix`, in the order of the names.
bool addContents(zip_t* archive, const QString& folder, const QString& prefix)
{
    const QFileInfoList entries = QDir(folder).entryInfoList(
        QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks,
        QDir::Name);
    for (const QFileInfo& entry : entries) {
        const QString name = prefix + entry.fileName();
        if (entry.isDir()) {
            if (!addFolder(archive, name) || !addContents(archive, entry.filePath(), name + u'/'))
                return false;
        } else if (name != TypeFile && !addFile(archive, entry.filePath(), name, true)) {
            return false;
        }
    }
    return true;
}

bool addAll(zip_t* archive, const QString& folder)
{
    const QFileInfo typeFile(QDir(folder), TypeFile);
    if (typeFile.isFile() && !typeFile.isSymLink() &&
        !addFile(archive, typeFile.filePath(), TypeFile, false))
        return false;
    return addContents(archive, folder, QString());
}
} // namespace

Status Archive::pack(const QString& folder, const QString& archive)
{
    int code = 0;
    Writer writer(zip_open(QFile::encodeName(archive).constData(), ZIP_CREATE | ZIP_EXCL, &code));
    if (!writer) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        Failure why = failed(&error);
        zip_error_fini(&error);
        return why;
    }
    if (!addAll(writer.get(), folder))
        return failed(zip_get_error(writer.get()));
    if (zip_get_num_entries(writer.get(), 0) == 0) // the library would write no file at all
        return Failure{Failure::Kind::Missing,
                       QCoreApplication::translate("Archive", "The folder is empty"),
                       {}};
    if (zip_close(writer.get()) != 0)
        return failed(zip_get_error(writer.get()));
    (void)writer.release(); // closed, and so freed
    return {};
}
