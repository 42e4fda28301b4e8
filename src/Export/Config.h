#pragma once

#include <QString>

#include <array>

/// The person's settings: a destination folder for each category, the rule for name clashes,
/// whether the browser is hidden and whether new versions are asked for. Kept in a per-user file.
/// Changed on the window's thread, and only while no export runs.
class Config
{
public:
    /// The destination folders, in the order of the preferences.
    enum class Folder {
        Music,
        Movies,
        TVShows,
        Podcasts,
        Audiobooks,
        Ringtones,
        Books,
        Playlists,
        VoiceMemos,
        CameraRoll,
        Photos
    };
    static constexpr int FolderCount = int(Folder::Photos) + 1;
    /// A folder's plain name, as in "TV Shows": what it is called below a common folder.
    static QString folderName(Folder folder);

    /// The settings that the program shares; loaded at the first call.
    static Config& instance();

    Config();
    /// Reads the store. A missing value, or one of the wrong type, gives the default.
    void load();
    /// Writes every setting to the store.
    void save() const;

    /// The folder as it is set, without a look at the disk.
    [[nodiscard]] const QString& folderPath(Folder folder) const;
    void setFolderPath(Folder folder, const QString& path);
    /// The folder as it is set; created, with its parents, as far as that is possible.
    [[nodiscard]] QString existingFolder(Folder folder) const;

    [[nodiscard]] QString musicDir() const { return existingFolder(Folder::Music); }
    [[nodiscard]] QString moviesDir() const { return existingFolder(Folder::Movies); }
    [[nodiscard]] QString tvShowsDir() const { return existingFolder(Folder::TVShows); }
    [[nodiscard]] QString podcastsDir() const { return existingFolder(Folder::Podcasts); }
    [[nodiscard]] QString audiobooksDir() const { return existingFolder(Folder::Audiobooks); }
    [[nodiscard]] QString ringtonesDir() const { return existingFolder(Folder::Ringtones); }
    [[nodiscard]] QString booksDir() const { return existingFolder(Folder::Books); }
    [[nodiscard]] QString playlistsDir() const { return existingFolder(Folder::Playlists); }
    [[nodiscard]] QString voiceMemosDir() const { return existingFolder(Folder::VoiceMemos); }
    [[nodiscard]] QString cameraRollDir() const { return existingFolder(Folder::CameraRoll); }
    [[nodiscard]] QString photosDir() const { return existingFolder(Folder::Photos); }
    void setMusicDir(const QString& path) { setFolderPath(Folder::Music, path); }
    void setMoviesDir(const QString& path) { setFolderPath(Folder::Movies, path); }
    void setTVShowsDir(const QString& path) { setFolderPath(Folder::TVShows, path); }
    void setPodcastsDir(const QString& path) { setFolderPath(Folder::Podcasts, path); }
    void setAudiobooksDir(const QString& path) { setFolderPath(Folder::Audiobooks, path); }
    void setRingtonesDir(const QString& path) { setFolderPath(Folder::Ringtones, path); }
    void setBooksDir(const QString& path) { setFolderPath(Folder::Books, path); }
    void setPlaylistsDir(const QString& path) { setFolderPath(Folder::Playlists, path); }
    void setVoiceMemosDir(const QString& path) { setFolderPath(Folder::VoiceMemos, path); }
    void setCameraRollDir(const QString& path) { setFolderPath(Folder::CameraRoll, path); }
    void setPhotosDir(const QString& path) { setFolderPath(Folder::Photos, path); }

    /// A CopyRule, or a number that counts as overwriting.
    [[nodiscard]] int copyRule() const { return _copyRule; }
    void setCopyRule(int rule) { _copyRule = rule; }
    [[nodiscard]] bool hideBrowser() const { return _hideBrowser; }
    void setHideBrowser(bool hide) { _hideBrowser = hide; }
    /// Whether the program asks for a new version at its start.
    [[nodiscard]] bool checkVersion() const { return _checkVersion; }
    void setCheckVersion(bool check) { _checkVersion = check; }

private:
    std::array<QString, FolderCount> _folders;
    int _copyRule = 0;
    bool _hideBrowser = false;
    bool _checkVersion = true;
};
