#pragma once
// The moment documents and the device catalog of the action editors' tests.
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "support/ScriptedAnswerer.h"

#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>
#include <string>

// A boiler with a writable set point (0 to 150 °C), a read-only temperature, a writable
// pump command (digital: Off/On), a writable mode with three named values, a writable
// text, and a writable integer without a range.
inline char const kActionTestCatalog[] =
    "<deviceTree><catalog><driver><name>BOILER</name><type>MODBUS-TCP</type>"
    "<variable><code>SP</code><type>analog</type><writable>T</writable><min>0</min><max>150</max>"
    "<unit>°C</unit></variable>"
    "<variable><code>T1</code><type>analog</type><min>0</min><max>200</max></variable>"
    "<variable><code>PUMP</code><type>digital</type><writable>T</writable></variable>"
    "<variable><code>MODE</code><type>integer</type><writable>T</writable><states>"
    "<state><value>0</value><text>Off</text></state><state><value>1</value><text>Auto</text></state>"
    "<state><value>2</value><text>Manual</text></state></states></variable>"
    "<variable><code>LABEL</code><type>text</type><writable>T</writable></variable>"
    "<variable><code>COUNT</code><type>integer</type><writable>T</writable></variable>"
    "</driver></catalog></deviceTree>";

// An event's two moments (activation and deactivation) holding the given actions, with
// the test catalog installed and every message recorded.
class ActionEditorTest : public ::testing::Test {
protected:
    ActionEditorTest()
    {
        XmlDocument devices;
        EXPECT_TRUE(devices.Parse(kActionTestCatalog));
        ZoInstallProjectCatalog(devices.Root(), nullptr);
    }
    ~ActionEditorTest() override { ZoDeviceCatalog::Install(nullptr); }

    // Loads the event's actions: inner XML of `activate` and of `deactivate`.
    void Load(std::string const& activate, std::string const& deactivate = "")
    {
        ASSERT_TRUE(m_doc.Parse(("<actions><activate>" + activate + "</activate><deactivate>" + deactivate
                                 + "</deactivate></actions>")
                                    .c_str()));
    }
    XmlDocument::XmlNode* Activate() { return m_doc.Root()->Node(L"activate"); }
    XmlDocument::XmlNode* Deactivate() { return m_doc.Root()->Node(L"deactivate"); }
    // The action of the activation moment with this id.
    XmlDocument::XmlNode* Action(wchar_t const* id, wchar_t const* tag)
    {
        return m_doc.Root()->NodeV(L"activate/%s?id=%s?", tag, id);
    }
    // Opens an editor on the activation moment's action with this id and tag, with the
    // list pane's two flags, as the pane opens it.
    template <class Editor>
    Editor& OpenEditor(std::unique_ptr<Editor>& dialog, wchar_t const* id, wchar_t const* tag, bool skipCheck,
                       bool keep)
    {
        dialog = std::make_unique<Editor>(nullptr, Action(id, tag), Activate());
        dialog->m_skipCheck = skipCheck;
        dialog->m_keep = keep;
        dialog->EnsureInitialized();
        return *dialog;
    }
    std::string Xml(XmlDocument::XmlNode const* node) const
    {
        std::string out;
        node->CreateXmlCode(out);
        return out;
    }
    // The object name of the widget that has the focus in the dialog (offscreen windows
    // are not active, so the dialog's own focus widget is asked).
    static QString Focused(QWidget& dialog)
    {
        QWidget* focus = dialog.focusWidget();
        return focus ? focus->objectName() : QString();
    }

    XmlDocument m_doc;
    ScriptedAnswerer m_answers;
};
