#pragma once
#include "config/XmlDocument.h"
#include "editor/ZoEDlgEventCfg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// A working copy of an `events` element with a few events, a time-tables document, and the
// event editor opened on one of the events.
class EventEditorTest : public ::testing::Test {
protected:
    EventEditorTest()
    {
        EXPECT_TRUE(m_events.Parse(
            "<events>"
            "<event><id>{E-OTHER}</id><name>Pump fault</name></event>"
            "</events>"));
        EXPECT_TRUE(m_timeTables.Parse(
            "<timeTables>"
            "<days><day><id>{D-1}</id><name>Workday</name></day>"
            "<day><id>{D-2}</id><name>Weekend</name></day></days>"
            "<weeks><week><id>{W-1}</id><name>Office week</name></week></weeks>"
            "<calendars><calendar><id>{C-1}</id><name>Holidays</name></calendar></calendars>"
            "</timeTables>"));
        m_users.Create(L"usersBD");
    }

    // Appends an event parsed from its inner XML (keys only) to the events and returns it.
    XmlNode* AddEvent(char const* keys)
    {
        XmlDocument piece;
        std::string const text = std::string("<event>") + keys + "</event>";
        EXPECT_TRUE(piece.Parse(text.c_str()));
        XmlNode* event = m_events.Root()->NewChild(L"event", nullptr);
        *event = *piece.Root();
        return event;
    }

    ZoEDlgEventCfg& Open(XmlNode* event, XmlNode const* timeTablesRoot)
    {
        m_dialog = std::make_unique<ZoEDlgEventCfg>(nullptr, event, m_events.Root(), nullptr,
                                                    timeTablesRoot, &m_users);
        return *m_dialog;
    }
    ZoEDlgEventCfg& Open(XmlNode* event) { return Open(event, m_timeTables.Root()); }
    ZoEDlgEventCfg& OpenInitialized(XmlNode* event)
    {
        Open(event).EnsureInitialized();
        return *m_dialog;
    }

    template <class W>
    W* Get(char const* name) const
    {
        W* widget = m_dialog->findChild<W*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QLineEdit* Edit(char const* name) const { return Get<QLineEdit>(name); }
    QCheckBox* Check(char const* name) const { return Get<QCheckBox>(name); }
    QComboBox* TimeTables() const { return Get<QComboBox>("timeTableCombo"); }
    QTabWidget* Tabs() const { return Get<QTabWidget>("tabs"); }
    void SetText(char const* name, QString const& text) const { Edit(name)->setText(text); }
    void ClickOk() const { Get<QPushButton>("okButton")->click(); }

    static std::string Xml(XmlNode const* node)
    {
        std::string out;
        node->CreateXmlCode(out);
        return out;
    }
    static std::vector<std::wstring> Tags(XmlNode const* node)
    {
        std::vector<std::wstring> tags;
        for (auto it = node->ChildsBegin(); it != node->ChildsEnd(); ++it)
            tags.push_back((*it)->Tag());
        return tags;
    }

    XmlDocument m_events;
    XmlDocument m_timeTables;
    XmlDocument m_users;
    std::unique_ptr<ZoEDlgEventCfg> m_dialog;
};
