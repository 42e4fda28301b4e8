#pragma once

#include <QString>

#include <memory>

/// Real mounts for a test, which nobody outside its process sees.
namespace PrivateMounts
{
/// Moves this process into a mount namespace of its own; as an ordinary user into a user
/// namespace as well. Call it before any thread starts. Throws std::system_error.
void enter();

/// Hides the players that are mounted on this computer, in the namespace of this process alone.
void hidePlayers();

/// `enter` as the first base of a fixture, before any thread starts.
struct Place {
    Place() { enter(); }
};

/// A mount that is undone with the object.
class Mount
{
public:
    /// Shows `folder` at `path` too.
    static std::unique_ptr<Mount> bind(const QString& folder, const QString& path);
    /// The same, and nothing can be written there.
    static std::unique_ptr<Mount> readOnlyBind(const QString& folder, const QString& path);
    /// An empty file system in memory.
    static std::unique_ptr<Mount> memory(const QString& path, qint64 bytes);
    /// A file system of terminals: mounted like any other, and no volume.
    static std::unique_ptr<Mount> terminals(const QString& path);
    /// A file system image on a loop device; only root may do this.
    static std::unique_ptr<Mount> image(const QString& imageFile, const QString& path);

    ~Mount();
    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;

    /// Takes the mount away now, even if files on it are open.
    void unmount();
    [[nodiscard]] const QString& path() const { return _path; }

private:
    explicit Mount(const QString& path);

    QString _path;
    bool _mounted = true;
};

/// Whether this process may mount images.
bool canMountImages();

/// Writes an ext4 image that holds what `folder` holds.
void makeImage(const QString& imageFile, const QString& folder, int mebibytes);
} // namespace PrivateMounts
