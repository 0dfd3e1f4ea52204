#pragma once
#include "config/XmlDocument.h"

#include <QAbstractTableModel>
#include <QString>

#include <string>
#include <vector>

using XmlNode = XmlDocument::XmlNode;

// The texts a recipients list shows besides the names of the users document.
struct ZoRecipientTexts {
    QString nameHeader;    // column 0
    QString detailHeader;  // column 1: the contact (mail address, phone number) or the members
    QString missingDetail; // column 1 of a user without that contact ("No mail address")
    QString missingTip;    // tool tip of such a user
    QString unknownName;   // column 0 of an id the users document does not know
    QString unknownTip;    // tool tip of such a row
    QString noMembers;     // column 1 of a list without members
};

// A checkable list of recipients of a mail or SMS action, read from the users document:
// either its users (name and contact) or one kind of its distribution lists (name and
// member names). Column 0 holds the name and the check box, column 1 the detail. Rows are
// sorted by name, ignoring case.
//
// A user without the contact the action needs (an empty `mail` or `phone`), or without an
// `id`, is shown greyed and cannot be checked. An id stored in the action that the users document does not know
// (a user or list deleted since) is kept as a row of its own at the end, checked and
// marked, so that nothing is dropped unseen: the user clears it to remove it.
class ZoRecipientsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    struct Row {
        std::wstring id;
        QString name;
        QString detail;
        bool available = true; // may be checked
        bool unknown = false;  // id not in the users document
        bool missingContact = false; // a user without the contact the action needs
        bool checked = false;
    };

    explicit ZoRecipientsModel(ZoRecipientTexts texts, QObject* parent = nullptr);

    // Rows of the users (`users/user` with `id`, `name` and the contact key, "mail" or
    // "phone") of the users document's root; a null root or no `users` gives no row.
    void LoadUsers(XmlNode const* usersRoot, wchar_t const* contactKey);
    // Rows of the lists (`<listsTag>/<any tag>` with `id`, `name`, `users/user` = user id);
    // the detail names the members, in the list's order.
    void LoadLists(XmlNode const* usersRoot, wchar_t const* listsTag);
    // Checks the rows of the ids held (as texts of its children) by the action's container
    // (`users`, `mailLists`, `phoneLists`; null checks nothing). Unknown ids become rows.
    void CheckIds(XmlNode const* container);

    // The checked ids, in row order.
    std::vector<std::wstring> CheckedIds() const;
    bool HasAvailableRows() const;
    Row const& RowAt(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    // The row of an id, or -1.
    int RowOfId(std::wstring const& id) const;

    int rowCount(QModelIndex const& parent = QModelIndex()) const override;
    int columnCount(QModelIndex const& parent = QModelIndex()) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    bool setData(QModelIndex const& index, QVariant const& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(QModelIndex const& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    bool IsRowIndex(QModelIndex const& index) const;
    void SetRows(std::vector<Row> rows);

    ZoRecipientTexts m_texts;
    std::vector<Row> m_rows;
};

// The ids held by an action's container as texts of its children (null: none).
std::vector<std::wstring> ZoRecipientIds(XmlNode const* container);
// Whether two id lists name the same ids, whatever their order.
bool ZoSameRecipientIds(std::vector<std::wstring> a, std::vector<std::wstring> b);
// Writes the ids into the action's container `containerTag`, one `itemTag` child each;
// the container keeps its place, and is removed when there is no id.
void ZoWriteRecipientIds(XmlNode& action, wchar_t const* containerTag, wchar_t const* itemTag,
                         std::vector<std::wstring> const& ids);
