// Free recipients of mail and SMS actions: how a typed list is split and stored, which
// mail addresses are plausible and which phone numbers are in international format.
#include "actions/ZoRecipientAddresses.h"

#include <gtest/gtest.h>

using Entries = std::vector<std::wstring>;

TEST(ZoRecipientAddresses, SplitsAtSemicolonsAndCommasIgnoringBlanksAndEmptyEntries)
{
    EXPECT_EQ(ZoSplitRecipients(L""), Entries{});
    EXPECT_EQ(ZoSplitRecipients(L" ; ;, "), Entries{});
    EXPECT_EQ(ZoSplitRecipients(L"a@b.c"), Entries{L"a@b.c"});
    EXPECT_EQ(ZoSplitRecipients(L" a@b.c ;d@e.f,  g@h.i; "), (Entries{L"a@b.c", L"d@e.f", L"g@h.i"}));
    EXPECT_EQ(ZoSplitRecipients(L"+44 20 7946 0100;+1 555 0100"), (Entries{L"+44 20 7946 0100", L"+1 555 0100"}));
    EXPECT_EQ(ZoJoinRecipients({L"a@b.c", L"d@e.f"}), L"a@b.c; d@e.f");
    EXPECT_EQ(ZoJoinRecipients({}), L"");
}

TEST(ZoRecipientAddresses, PlausibleMailAddresses)
{
    for (wchar_t const* good : {L"anna@site.example", L"first.last+alarms@mail.site-1.example", L"x@y.io",
                                L"o'neil@example.org", L"m\u00FCller@stra\u00DFe.example"})
        EXPECT_TRUE(ZoIsPlausibleMailAddress(good)) << std::wstring(good).size();
    for (wchar_t const* bad : {L"", L"anna", L"anna@", L"@site.example", L"anna@site", L"an na@site.example",
                               L"anna@@site.example", L"a@b@site.example", L".anna@site.example", L"anna.@site.example",
                               L"an..na@site.example", L"anna@site..example", L"anna@-site.example",
                               L"anna@site-.example", L"anna@site.example.", L"<anna@site.example>",
                               L"anna@site_1.example", L"anna;tom@site.example"})
        EXPECT_FALSE(ZoIsPlausibleMailAddress(bad)) << std::wstring(bad).size();
    EXPECT_FALSE(ZoIsPlausibleMailAddress(std::wstring(65, L'a') + L"@site.example"));
}

TEST(ZoRecipientAddresses, PhoneNumbersInInternationalFormat)
{
    for (wchar_t const* good : {L"+44 20 7946 0100", L"+447700900101", L"0044 7700 900101", L"112", L"+123456789012345"})
        EXPECT_TRUE(ZoIsValidPhoneNumber(good)) << std::wstring(good).size();
    for (wchar_t const* bad : {L"", L"+", L"12", L"+1234567890123456", L"+44-20-7946-0100", L"(020) 7946 0100",
                               L"44+20", L"++44 20", L"+44 20 79a6"})
        EXPECT_FALSE(ZoIsValidPhoneNumber(bad)) << std::wstring(bad).size();
}

TEST(ZoRecipientAddresses, TheFirstFaultyEntryIsNamed)
{
    EXPECT_EQ(ZoFirstInvalidMailAddress(L""), L"");
    EXPECT_EQ(ZoFirstInvalidMailAddress(L"a@b.io; c@d.io"), L"");
    EXPECT_EQ(ZoFirstInvalidMailAddress(L"a@b.io; tom at site; x"), L"tom at site");
    EXPECT_EQ(ZoFirstInvalidPhoneNumber(L"+44 20 7946 0100; 555-0100"), L"555-0100");
    EXPECT_EQ(ZoFirstInvalidPhoneNumber(L" ; "), L"");
}
