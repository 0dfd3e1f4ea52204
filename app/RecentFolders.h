#pragma once
#include <QString>
#include <QStringList>

// The project folders opened last, most recent first, kept in the user's settings (or in
// the INI file given, which tests use so that they never touch the user's settings).
class RecentFolders {
public:
    static constexpr int kMaxFolders = 8;

    RecentFolders();
    explicit RecentFolders(QString iniFile);

    QStringList Folders() const;
    // Puts folder first, dropping an older entry of the same folder and the oldest beyond
    // the maximum.
    void Add(QString const& folder);
    void Remove(QString const& folder);
    void Clear();

private:
    void Store(QStringList const& folders);
    QString m_iniFile;
};
