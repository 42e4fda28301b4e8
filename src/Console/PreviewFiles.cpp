#include "Console/PreviewFiles.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/CameraRollDb.h"
#include "Device/Device.h"
#include "Device/Ithmb.h"
#include "Device/PhotoDb.h"

#include <QImageWriter>

namespace
{
/// Writes pictures into one folder, until something fails.
class Folder
{
public:
    Folder(const QString& parent, QStringView name)
        : _path(PathName::join(parent, name))
        , _problem(Utility::createFolder(_path))
    {
    }

    void add(const QString& name, const QImage& image)
    {
        if (image.isNull() || !_problem.isEmpty())
            return;
        QImageWriter writer(PathName::join(_path, name + QStringLiteral(".png")), "png");
        if (!writer.write(image))
            _problem = writer.errorString();
    }

    /// Which folder, and what failed there; empty when nothing did.
    [[nodiscard]] QString problem() const
    {
        return _problem.isEmpty() ? QString() : _path + QStringLiteral(": ") + _problem;
    }

private:
    QString _path;
    QString _problem;
};

QString writePreviews(const std::vector<Photo*>& photos, Folder folder)
{
    const qint64 placeHolder = Photo::placeHolder().cacheKey();
    for (std::size_t i = 0; i < photos.size(); ++i) {
        const QImage preview = photos[i]->smallImage();
        if (preview.cacheKey() != placeHolder)
            folder.add(QString::number(i), preview);
    }
    return folder.problem();
}

QString writeRenditions(Device& device, const std::vector<Photo*>& photos, Folder folder)
{
    const Ithmb decoder(device);
    for (std::size_t i = 0; i < photos.size(); ++i) {
        const std::vector<Thumbnail>& thumbnails = photos[i]->thumbnails;
        for (std::size_t k = 0; k < thumbnails.size(); ++k)
            folder.add(QStringLiteral("%1-%2").arg(i).arg(k), decoder.convert(thumbnails[k]));
    }
    return folder.problem();
}
} // namespace

QString PreviewFiles::write(Device& device, const QString& folder)
{
    QString problem;
    if (PhotoDb* library = device.photoDb()) {
        library->previews().wait();
        problem = writePreviews(library->photos(), Folder(folder, u"photos"));
        if (problem.isEmpty())
            problem = writeRenditions(device, library->photos(), Folder(folder, u"thumbnails"));
    }
    CameraRollDb* roll = problem.isEmpty() ? device.cameraRollDb() : nullptr;
    if (roll) {
        roll->previews().wait();
        problem = writePreviews(roll->photos(), Folder(folder, u"cameraRoll"));
    }
    return problem;
}
