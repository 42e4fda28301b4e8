#include "Device/LibraryProblems.h"

#include "Base/Failure.h"

#include <algorithm>
#include <limits>

LibraryProblems::LibraryProblems(Library library, ProblemList& problems)
    : _library(library)
    , _problems(&problems)
{
}

void LibraryProblems::isMissing(const QString& where) const
{
    _problems->add(Problem::Kind::NotUnderstood, missing(), where);
}

void LibraryProblems::isEmpty() const
{
    _problems->add(Problem::Kind::Damaged, empty());
}

void LibraryProblems::isDamaged(const QString& exact) const
{
    _problems->add(Problem::Kind::Damaged, damaged(), exact);
}

void LibraryProblems::isDamaged(qint64 read, qint64 all, const QString& exact) const
{
    _problems->add(Problem::Kind::Damaged, damaged(read, all), exact);
}

void LibraryProblems::isNotUnderstood(const QString& exact) const
{
    _problems->add(Problem::Kind::NotUnderstood, notUnderstood(), exact);
}

void LibraryProblems::isCutOff(const QString& exact) const
{
    _problems->add(Problem::Kind::CutOff, cutOff(), exact);
}

void LibraryProblems::cannotBeRead(const Failure& failure) const
{
    _problems->add(failure, unreadable());
}

void LibraryProblems::lacksNewestChanges(const Failure& failure) const
{
    _problems->add(failure, older());
}

// Each sentence stands whole for each library: other languages bend the words around the name.

QString LibraryProblems::missing() const
{
    switch (_library) {
    case Library::Music:
        return tr("The device has music, but no music library that is known here.");
    case Library::Photos:
        return tr("The device has photos, but no photo library that is known here.");
    case Library::CameraRoll:
        return tr("The device has pictures, but no camera roll that is known here.");
    case Library::VoiceMemos:
        return tr("The device has recordings, but no list of voice memos that is known here.");
    case Library::Books:
        return tr("The device has books, but no list of books that is known here.");
    }
    return {};
}

QString LibraryProblems::empty() const
{
    switch (_library) {
    case Library::Music:
        return tr("The music library is damaged: its file is empty.");
    case Library::Photos:
        return tr("The photo library is damaged: its file is empty.");
    case Library::CameraRoll:
        return tr("The camera roll is damaged: its file is empty.");
    case Library::VoiceMemos:
        return tr("The list of voice memos is damaged: its file is empty.");
    case Library::Books:
        return tr("The list of books is damaged: its file is empty.");
    }
    return {};
}

QString LibraryProblems::damaged() const
{
    switch (_library) {
    case Library::Music:
        return tr("The music library is damaged. What could be read of it is shown.");
    case Library::Photos:
        return tr("The photo library is damaged. What could be read of it is shown.");
    case Library::CameraRoll:
        return tr("The camera roll is damaged. What could be read of it is shown.");
    case Library::VoiceMemos:
        return tr("The list of voice memos is damaged. What could be read of it is shown.");
    case Library::Books:
        return tr("The list of books is damaged. What could be read of it is shown.");
    }
    return {};
}

QString LibraryProblems::damaged(qint64 read, qint64 all) const
{
    const int count = int(std::min<qint64>(all, std::numeric_limits<int>::max()));
    switch (_library) {
    case Library::Music:
        return tr("The music library is damaged: %1 of %n tracks could be read.", nullptr, count)
            .arg(read);
    case Library::Photos:
    case Library::CameraRoll:
        return tr("The photo library is damaged: %1 of %n photos could be read.", nullptr, count)
            .arg(read);
    case Library::VoiceMemos:
        return tr("The list of voice memos is damaged: %1 of %n recordings could be read.", nullptr,
                  count)
            .arg(read);
    case Library::Books:
        return tr("The list of books is damaged: %1 of %n books could be read.", nullptr, count)
            .arg(read);
    }
    return {};
}

QString LibraryProblems::notUnderstood() const
{
    switch (_library) {
    case Library::Music:
        return tr(
            "Part of the music library is of a kind that is not known here, and is not shown.");
    case Library::Photos:
        return tr(
            "Part of the photo library is of a kind that is not known here, and is not shown.");
    case Library::CameraRoll:
        return tr("Part of the camera roll is of a kind that is not known here, and is not shown.");
    case Library::VoiceMemos:
        return tr("Part of the list of voice memos is of a kind that is not known here, and is not "
                  "shown.");
    case Library::Books:
        return tr(
            "Part of the list of books is of a kind that is not known here, and is not shown.");
    }
    return {};
}

QString LibraryProblems::cutOff() const
{
    switch (_library) {
    case Library::Music:
        return tr(
            "Part of the music library is larger than anything that is known, and was not read.");
    case Library::Photos:
        return tr(
            "Part of the photo library is larger than anything that is known, and was not read.");
    case Library::CameraRoll:
        return tr(
            "Part of the camera roll is larger than anything that is known, and was not read.");
    case Library::VoiceMemos:
        return tr("Part of the list of voice memos is larger than anything that is known, and was "
                  "not read.");
    case Library::Books:
        return tr(
            "Part of the list of books is larger than anything that is known, and was not read.");
    }
    return {};
}

QString LibraryProblems::unreadable() const
{
    switch (_library) {
    case Library::Music:
        return tr("The music library could not be read from the device.");
    case Library::Photos:
        return tr("The photo library could not be read from the device.");
    case Library::CameraRoll:
        return tr("The camera roll could not be read from the device.");
    case Library::VoiceMemos:
        return tr("The list of voice memos could not be read from the device.");
    case Library::Books:
        return tr("The list of books could not be read from the device.");
    }
    return {};
}

QString LibraryProblems::older() const
{
    switch (_library) {
    case Library::Music:
        return tr("The newest changes of the music library could not be read. It is shown as it "
                  "was before them.");
    case Library::Photos:
        return tr("The newest changes of the photo library could not be read. It is shown as it "
                  "was before them.");
    case Library::CameraRoll:
        return tr("The newest changes of the camera roll could not be read. It is shown as it was "
                  "before them.");
    case Library::VoiceMemos:
        return tr("The newest changes of the list of voice memos could not be read. It is shown as "
                  "it was before them.");
    case Library::Books:
        return tr("The newest changes of the list of books could not be read. It is shown as it "
                  "was before them.");
    }
    return {};
}
