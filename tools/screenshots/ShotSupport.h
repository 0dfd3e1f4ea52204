#pragma once
// What every screenshot scene shares: showing a window, letting it paint, saving it, and
// a registry through which a file of this folder adds its own scene to the run.
#include <QString>
#include <functional>
#include <vector>

class MainWindow;
class QDialog;
class QAbstractItemView;
class QTreeView;
class QWidget;
class XmlDocument;

void Fail(char const* what);
// Lets the window system map, expose and paint what was just shown or changed.
void Settle(int ms = 400);
void Show(QWidget& window);
// Saves a picture of `window` as fileName in the output folder and counts it.
void Save(QWidget& window, char const* fileName);
// Selects the row showing `name` in a list (the first row when none does).
void SelectRow(QAbstractItemView* view, QString const& name);
void ClickButton(QDialog& dialog, char const* name);
// Parses the file `name` of the project folder into document; false when it cannot be
// read or holds no document.
bool LoadShotDocument(QString const& folder, char const* name, XmlDocument& document);

// A scene runs after the built-in ones, on the host window opened on the project's copy
// (projectCopy is that folder). It installs its own modal runner if it needs one; the run
// fails unless it saved exactly `pictures` pictures.
struct ShotScene {
    char const* name;
    int pictures;
    std::function<void(MainWindow& window, QString const& projectCopy)> run;
};
std::vector<ShotScene>& ShotScenes();
// Use at namespace scope: static bool const registered = RegisterShotScene({...});
bool RegisterShotScene(ShotScene scene);
