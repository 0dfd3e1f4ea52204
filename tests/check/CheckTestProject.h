#pragma once
// A small project in memory for the project check's tests: a catalog of one PLC, one clean
// event ("Other"), a group, a day and a week program, a user with a mailing and a phone
// list, a screen and a report file. Each test adds the event it is about.
#include "check/ZoProjectChecker.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace check_test {

inline std::string const kDevices = R"(<deviceTree><deviceGroups><devices>%REGS%</devices><groups/></deviceGroups>
<catalog><driver><id>{D1}</id><name>PLC1</name><type>MODBUS</type>
 <variable><code>LEVEL</code><type>analog</type><min>0</min><max>100</max></variable>
 <variable><code>RUN</code><type>digital</type></variable>
 <variable><code>SETPOINT</code><type>analog</type><min>0</min><max>100</max><writable>T</writable></variable>
</driver></catalog></deviceTree>)";

inline std::string const kTimeTables = R"(<timeTables>
<days><day><id>{T-DAY}</id><name>Work</name><color>FFFFFF</color><slot><from>08:00</from><to>17:00</to></slot></day></days>
<weeks><week><id>{T-WEEK}</id><name>Weekdays</name><day1>{T-DAY}</day1><day2>{T-DAY}</day2></week></weeks>
<calendars/></timeTables>)";

inline std::string const kUsers = R"(<usersBD><users><user><id>{U1}</id><name>Anna</name><mail>a@b.example</mail></user></users>
<mailLists><mailList><id>{M1}</id><name>Ops</name></mailList></mailLists>
<phoneLists><phoneList><id>{P1}</id><name>Call</name></phoneList></phoneLists></usersBD>)";

// The fields every event gets unless the test gives its own.
inline std::string const kDefaults[][2] = {
    {"condition", "[PLC1.RUN] = 1"}, {"delayToActivate", "5"}, {"delayToDeactivate", "0"},
    {"notify", "F"}, {"disabled", "F"}};

// An event element: id, name, the given fields, then the defaults the fields lack.
inline std::string Event(std::string const& id, std::string const& name, std::string const& fields)
{
    std::string xml = "<event><id>" + id + "</id><name>" + name + "</name>" + fields;
    for (auto const& [key, value] : kDefaults)
        if (fields.find("<" + key + ">") == std::string::npos && fields.find("<" + key + "/>") == std::string::npos)
            xml += "<" + key + ">" + value + "</" + key + ">";
    return xml + "</event>";
}

inline std::string const kOther =
    Event("{E-OTHER}", "Other", "<notify>T</notify><condition>[PLC1.RUN] = 0</condition>");

class CheckProject : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        for (char const* name : {"Overview.1.XSCN", "Daily.1.xrpt"}) {
            QFile file(m_folder.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }

    // Checks a project of the Other event and these events; every event is registered once
    // unless registrations are given.
    std::vector<ZoFinding> Check(std::string const& events, std::string const& timeTables = kTimeTables,
                                 std::string const* registrations = nullptr)
    {
        std::string const all = kOther + events;
        std::string regs;
        if (registrations) {
            regs = *registrations;
        } else {
            for (std::size_t at = all.find("<event><id>"); at != std::string::npos; at = all.find("<event><id>", at + 1)) {
                std::size_t const from = at + 11;
                regs += "<device><id>" + all.substr(from, all.find('<', from) - from) + "</id><type>R$EVE</type></device>";
            }
        }
        std::string devices = kDevices;
        devices.replace(devices.find("%REGS%"), 6, regs);
        Parse(m_events, "<eventsConfiguration><events>" + all +
                            "</events><eventsGroups><eventsGroup><id>{G1}</id><name>Pumps</name></eventsGroup>"
                            "</eventsGroups></eventsConfiguration>");
        Parse(m_timeTables, timeTables);
        Parse(m_devices, devices);
        Parse(m_users, kUsers);
        ZoProjectDocs docs{m_events.Root(), m_timeTables.Root(), m_devices.Root(), m_users.Root(),
                           QDir(m_folder.path()).absolutePath().toStdWString()};
        ZoCheckOptions options;
        options.from = QDate(2026, 1, 1);
        m_checker = std::make_unique<ZoProjectChecker>(docs, options);
        return m_checker->CheckProject();
    }

    static void Parse(XmlDocument& doc, std::string const& text)
    {
        ASSERT_TRUE(doc.Parse(text.c_str())) << text;
    }

    // The rules of the findings that are errors or warnings.
    static std::set<std::string> Rules(std::vector<ZoFinding> const& findings)
    {
        std::set<std::string> rules;
        for (ZoFinding const& finding : findings)
            if (finding.severity != ZoSeverity::Note)
                rules.insert(std::string(finding.rule));
        return rules;
    }

    QTemporaryDir m_folder;
    XmlDocument m_events;
    XmlDocument m_timeTables;
    XmlDocument m_devices;
    XmlDocument m_users;
    std::unique_ptr<ZoProjectChecker> m_checker;
};

} // namespace check_test
