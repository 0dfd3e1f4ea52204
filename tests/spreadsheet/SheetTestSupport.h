#pragma once
// A temporary copy of the demo project, opened as the host opens it, and the sheet of its
// events, for the spreadsheet tests.
#include "ProjectFolder.h"
#include "spreadsheet/EventsExport.h"
#include "spreadsheet/EventsImport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace sheet_test {

using XmlNode = XmlDocument::XmlNode;

inline QString const kDemoFolder = QStringLiteral(ZO_SOURCE_DIR "/examples/demo");

inline QByteArray ReadBytes(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline std::string Utf8(std::wstring const& text)
{
    return QString::fromStdWString(text).toStdString();
}

class DemoSheet : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        for (QString const& name : QDir(kDemoFolder).entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(QDir(kDemoFolder).filePath(name), m_dir.filePath(name)));
        Reopen();
    }

    void Reopen()
    {
        std::wstring error;
        m_project = ProjectFolder::Open(m_dir.path(), error);
        ASSERT_TRUE(m_project) << Utf8(error);
    }

    ZoImportTarget Target()
    {
        ZoImportTarget target;
        target.events = &m_project->Events();
        target.timeTables = &m_project->TimeTables();
        target.devices = &m_project->Devices();
        target.folder = m_dir.path().toStdWString();
        return target;
    }

    std::string Export()
    {
        std::string sheet;
        ZoExportEvents(m_project->Events().Root(), m_project->TimeTables().Root(), sheet);
        return sheet;
    }

    ZoImportPlan Plan(std::string const& sheet, ZoImportOptions options = {})
    {
        return ZoPlanImport(sheet, Target(), options);
    }

    // The plan's lines as one text, a line each.
    static std::string Report(ZoImportPlan const& plan)
    {
        std::string text;
        for (std::wstring const& line : ZoImportReport(plan))
            text += Utf8(line) + "\n";
        return text;
    }

    XmlNode* Event(wchar_t const* name) { return m_project->Events().Root()->NodeV(L"events/event?name=%s?", name); }

    QTemporaryDir m_dir;
    std::unique_ptr<ProjectFolder> m_project;
};

} // namespace sheet_test
