#pragma once

#include "Window/Commands.h"
#include "Window/MenuValidation.h"

#include <QHash>
#include <QObject>

#include <functional>

class QAction;
class QMainWindow;
class QMenu;

/// The menu bar and the context menus of the window. Each item is one action, wherever it
/// stands; it is enabled by the state of the window when a menu opens, and whenever the state
/// changed, because a shortcut opens no menu.
class MainMenu final : public QObject
{
    Q_OBJECT
public:
    /// Fills the window's menu bar. `state` tells what the window shows.
    MainMenu(QMainWindow& window, std::function<MenuState()> state);

    [[nodiscard]] QAction* action(Command command) const { return _actions.value(command); }
    [[nodiscard]] QMenu* sourceListMenu() const { return _sourceListMenu; }
    [[nodiscard]] QMenu* tableMenu() const { return _tableMenu; }
    /// The context menu of the photo grid.
    [[nodiscard]] QMenu* photoMenu() const { return _photoMenu; }

    /// The state changed. Many changes in a row cost one look.
    void stateChanged();
    /// Enables and disables every item now.
    void validate();

Q_SIGNALS:
    void triggered(Command command);
    /// A folder item; the tag counts the export folders from 0.
    void openBackupFolder(int tag);

private:
    QAction* make(Command command, const QString& text, const QString& icon = {});
    void makeActions();
    void setShortcuts();
    void nameForTheDesktop();
    QMenu* makeMenu(const QString& title,
                    std::initializer_list<std::initializer_list<Command>> groups);
    void fill(QMenu& menu, std::initializer_list<std::initializer_list<Command>> groups);
    QMenu* makeFolderMenu();

    QMainWindow& _window;
    std::function<MenuState()> _state;
    QHash<Command, QAction*> _actions;
    QMenu* _sourceListMenu = nullptr;
    QMenu* _tableMenu = nullptr;
    QMenu* _photoMenu = nullptr;
    bool _validationDue = false;
};
