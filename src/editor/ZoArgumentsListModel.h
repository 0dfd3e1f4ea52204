#pragma once
#include "editor/ZoNumberedListModel.h"

// The event editor's argument list: one row per `argument` of the event, in document order,
// numbered as the "%a" placeholders count them, showing the argument's `value` (heading 32433).
class ZoArgumentsListModel : public ZoNumberedListModel {
    Q_OBJECT
public:
    explicit ZoArgumentsListModel(QObject* parent = nullptr);
    // Rebuilds the rows from the event (none when it is null).
    void Fill(XmlNode const* event);
};
