#pragma once
// A users document for the mail and SMS editors' tests: four users (one without a mail
// address, one without a phone), two mailing lists and one phone list.
#include "config/XmlDocument.h"

#include <gtest/gtest.h>

namespace recipients_test {

inline char const kUsers[] =
    "<usersBD><version>24.11.17</version><users>"
    "<user><id>{U-TOM}</id><name>Tom Hughes</name><mail>tom@site.example</mail><phone>+44 7700 900102</phone></user>"
    "<user><id>{U-ANNA}</id><name>anna Berg</name><mail>anna@site.example</mail><phone>+44 7700 900101</phone></user>"
    "<user><id>{U-ROOM}</id><name>Control Room</name><mail></mail><phone>+44 20 7946 0100</phone></user>"
    "<user><id>{U-LAB}</id><name>Lab</name><mail>lab@site.example</mail></user>"
    "</users><mailLists>"
    "<mailList><id>{M-OPS}</id><name>Operators</name><users><user>{U-TOM}</user><user>{U-ANNA}</user></users></mailList>"
    "<mailList><id>{M-NONE}</id><name>Empty list</name></mailList>"
    "</mailLists><phoneLists>"
    "<phoneList><id>{P-CALL}</id><name>On call</name><users><user>{U-ANNA}</user><user>{U-GONE}</user></users></phoneList>"
    "</phoneLists></usersBD>";

inline void Load(XmlDocument& doc, char const* xml)
{
    ASSERT_TRUE(doc.Parse(xml)) << xml;
}

} // namespace recipients_test
