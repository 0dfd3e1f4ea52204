// Opening the mail editor's recipients on a large users file: its users sorted by name, its
// mailing lists with their members named, and the action's chosen users and lists checked.
// Measured against a floor taken in the same run: the XML library alone walking the same
// users file, reading what each row shows and resolving the members' names through a hash.
#include "actions/ZoRecipientsModel.h"
#include "BenchFloor.h"
#include "config/XmlDocument.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <string>
#include <unordered_map>

namespace {

constexpr int kMembersPerList = 40;

std::string UserId(int user)
{
    return "{U" + std::to_string(user) + "-0000-4000-8000-000000000000}";
}

// `users` users (every tenth without a mail address) and users/20 lists of 40 members.
std::string UsersXml(int users)
{
    std::string xml = "<usersBD><version>24.11.17</version><users>";
    for (int u = 0; u < users; ++u) {
        int const scrambled = (u * 7919) % users;
        xml += "<user><id>" + UserId(u) + "</id><name>User " + std::to_string(scrambled) + "</name><mail>";
        if (u % 10)
            xml += "user" + std::to_string(u) + "@site.example";
        xml += "</mail><phone>+44 7700 " + std::to_string(100000 + u) + "</phone></user>";
    }
    xml += "</users><mailLists>";
    for (int l = 0; l < users / 20; ++l) {
        xml += "<mailList><id>{L" + std::to_string(l) + "}</id><name>List " + std::to_string(l) + "</name><users>";
        for (int m = 0; m < kMembersPerList; ++m)
            xml += "<user>" + UserId((l * 131 + m * 17) % users) + "</user>";
        xml += "</users></mailList>";
    }
    return xml + "</mailLists></usersBD>";
}

// A mail action naming 500 users and 50 lists.
std::string ActionXml(int users)
{
    std::string xml = "<mail><message>m</message><users>";
    for (int u = 0; u < 500; ++u)
        xml += "<user>" + UserId(u * 37 % users) + "</user>";
    xml += "</users><mailLists>";
    for (int l = 0; l < 50; ++l)
        xml += "<mailList>{L" + std::to_string(l * 7) + "}</mailList>";
    return xml + "</mailLists></mail>";
}

// The floor: pugixml reads every user's id, name and address and every list's members'
// names.
std::size_t PugiWalk(pugi::xml_node root)
{
    std::unordered_map<std::string, std::string> names;
    std::size_t bytes = 0;
    for (pugi::xml_node user : root.child("users").children("user")) {
        std::string name = user.child_value("name");
        std::string const mail = user.child_value("mail");
        bytes += name.size() + mail.size();
        names.emplace(user.child_value("id"), std::move(name));
    }
    std::string members;
    for (pugi::xml_node list : root.child("mailLists").children()) {
        members.clear();
        for (pugi::xml_node member : list.child("users").children()) {
            auto const found = names.find(member.child_value());
            members += found != names.end() ? found->second : std::string();
            members += ", ";
        }
        bytes += members.size();
    }
    return bytes;
}

void BM_MailRecipientsLoad(benchmark::State& state)
{
    int const users = static_cast<int>(state.range(0));
    std::string const text = UsersXml(users);
    std::string const actionText = ActionXml(users);
    XmlDocument doc;
    XmlDocument action;
    pugi::xml_document pugiDoc;
    if (!doc.Parse(text.c_str()) || !action.Parse(actionText.c_str()) || !pugiDoc.load_string(text.c_str())) {
        state.SkipWithError("the users file does not parse");
        return;
    }
    ZoRecipientTexts const texts{"Name", "Mail address", "No mail address", "", "Unknown", "", "No members"};
    ZoRecipientsModel usersModel(texts);
    ZoRecipientsModel listsModel(texts);
    double ours = 0;
    std::int64_t rounds = 0;
    for (auto _ : state) {
        ours += zo::bench::MillisecondsOf([&] {
            usersModel.LoadUsers(doc.Root(), L"mail");
            usersModel.CheckIds(action.Root()->Child(L"users"));
            listsModel.LoadLists(doc.Root(), L"mailLists");
            listsModel.CheckIds(action.Root()->Child(L"mailLists"));
        });
        ++rounds;
    }
    std::size_t bytes = 0;
    double const floor =
        zo::bench::MillisecondsOfRounds(rounds, [&] { bytes += PugiWalk(pugiDoc.document_element()); });
    benchmark::DoNotOptimize(bytes);
    state.counters["users"] = usersModel.rowCount();
    state.counters["lists"] = listsModel.rowCount();
    state.counters["checked"] = static_cast<double>(usersModel.CheckedIds().size() + listsModel.CheckedIds().size());
    zo::bench::ReportAgainstFloor(state, rounds, "load_ms", ours, "pugi_walk_ms", floor, "x_pugi_walk");
}

} // namespace

BENCHMARK(BM_MailRecipientsLoad)->Arg(20000)->Unit(benchmark::kMillisecond);
