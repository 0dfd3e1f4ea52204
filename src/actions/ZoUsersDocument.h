#pragma once
#include "config/XmlDocument.h"
#include <functional>
#include <string>

class QWidget;

// The users document that the mail and SMS editors choose recipients from: "Users.zocfg"
// of the configuration folder (ZoVelmoraSetup::CfgPath), root `usersBD`. The module only
// reads it; nothing here ever writes the file.
//
// The host may hand the event editor the document unloaded (no root): it is then loaded
// the first time a mail or SMS editor needs it, once, on a short-lived worker thread while
// a modal wait box (text 36261) shows. A file that is missing, unreadable, not well-formed
// or of another root gives an empty `usersBD` with `version` "24.11.17", without a message.
// After loading, an empty `users` element is appended when the root has none.

inline constexpr wchar_t const* kUsersFileName = L"Users.zocfg";
inline constexpr wchar_t const* kUsersRootTag = L"usersBD";
inline constexpr wchar_t const* kUsersDocumentVersion = L"24.11.17";

// Loads when the document is not loaded yet; nothing when it is (or when users is null).
void ZoEnsureUsersLoaded(QWidget* parent, XmlDocument* users);

// Reads the users file at path into users; false when it cannot be used (users is then in
// any state). Runs on the worker thread.
bool ZoLoadUsersFile(XmlDocument& users, std::wstring const& path);

// Test seam: replaces the loader the worker runs (an empty function restores
// ZoLoadUsersFile).
using ZoUsersFileLoader = std::function<bool(XmlDocument&, std::wstring const&)>;
void ZoSetUsersFileLoader(ZoUsersFileLoader loader);
