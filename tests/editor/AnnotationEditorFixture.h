#pragma once
#include "EventEditorFixture.h"

#include "editor/ZoNumberedListModel.h"

#include <QAbstractItemModelTester>
#include <QStringList>
#include <QTreeView>

// The rows of a two-column list as "number text|number text".
inline QString ListRows(QTreeView const* list)
{
    QStringList rows;
    QAbstractItemModel const* model = list->model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows << model->index(row, 0).data().toString() + QLatin1Char(' ') + model->index(row, 1).data().toString();
    return rows.join(QLatin1Char('|'));
}

// The event editor opened with the project's groups "Boilers" {G-1}, "Alarms" {G-2} and
// "Pumps" {G-3}, so that the annotation area has groups to show and to offer.
class AnnotationEditorTest : public EventEditorTest {
protected:
    AnnotationEditorTest()
    {
        EXPECT_TRUE(m_groupsDoc.Parse(
            "<eventsGroups><eventsGroup><id>{G-1}</id><name>Boilers</name></eventsGroup>"
            "<eventsGroup><id>{G-2}</id><name>Alarms</name></eventsGroup>"
            "<eventsGroup><id>{G-3}</id><name>Pumps</name></eventsGroup></eventsGroups>"));
    }

    // Opens the editor on an event of kFullEvent's keys and these further children (the
    // event then shows no change until the test makes one).
    ZoEDlgEventCfg& OpenEvent(std::string const& children = {})
    {
        m_event = AddEvent(kFullEvent + children);
        m_dialog = std::make_unique<ZoEDlgEventCfg>(nullptr, m_event, m_events.Root(), m_groupsDoc.Root(),
                                                    m_timeTables.Root(), &m_users);
        m_dialog->EnsureInitialized();
        m_argumentsTester = std::make_unique<QAbstractItemModelTester>(
            List("argumentsList")->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        m_groupsTester = std::make_unique<QAbstractItemModelTester>(
            List("groupsList")->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        return *m_dialog;
    }

    QTreeView* List(char const* name) const { return Get<QTreeView>(name); }
    void Click(char const* button) const { Get<QAbstractButton>(button)->click(); }

    QString Rows(char const* list) const { return ListRows(List(list)); }
    // Selects these rows of a list (and nothing else).
    void Select(char const* list, std::initializer_list<int> rows) const
    {
        QTreeView* view = List(list);
        view->selectionModel()->clearSelection();
        for (int row : rows)
            view->selectionModel()->select(view->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    XmlDocument m_groupsDoc;
    XmlNode* m_event = nullptr;
    std::unique_ptr<QAbstractItemModelTester> m_argumentsTester, m_groupsTester;
};
