#include "editor/quote_table.h"
#include "platform/types.h"
#include "tests/support/test.h"

#include <set>

namespace {

using tlvn::QuoteTable;
using Characters = std::vector<std::string>; // a prefix, character by character

bool IsParent(const Characters& parent, const Characters& child)
{
    return child.size() == parent.size() + 1 &&
           std::equal(parent.begin(), parent.end(), child.begin());
}

int Enter(QuoteTable& table, const std::string& prefix, CodeType codeType = CT_SJIS)
{
    return table.Enter(prefix.data(), static_cast<int>(prefix.size()), codeType);
}

} // namespace

TEST(QuoteTable, NothingIsNoEntry)
{
    QuoteTable table;
    EXPECT_EQ(table.Enter(nullptr, 1, CT_SJIS), QuoteTable::kNone);
    EXPECT_EQ(table.Enter("", 0, CT_SJIS), QuoteTable::kNone);
    EXPECT_EQ(table.Enter(">", -1, CT_SJIS), QuoteTable::kNone);
    EXPECT_EQ(Enter(table, ">>"), 0);
    EXPECT_EQ(table.GetCount(), 1); // not its parent
    for (const int entry : {-1, 1, INT_MAX})
        EXPECT_EQ(table.GetLevel(entry), QuoteTable::kNone);
    table.Clear();
    EXPECT_EQ(table.GetCount(), 0);
    EXPECT_EQ(Enter(table, ">>"), 0); // not the one entered last before
}

// Prefixes of double-byte characters whose trail byte is a quote character, and of surrogate
// pairs: the parent is shorter by a character, not by a byte or unit.
TEST(QuoteTable, AgreesWithItsRulesOnRandomPrefixes)
{
    const auto bytes = [](const WCHAR* units) {
        const std::basic_string_view<WCHAR> view(units);
        return std::string(reinterpret_cast<const char*>(view.data()), view.size() * 2);
    };
    const struct {
        CodeType codeType;
        Characters alphabet;
    } alphabets[] = {
        {CT_SJIS, {">", "|", "\x81\x84", "\x83\x7C", "\xB1"}},
        {CT_UTF8,
         {bytes(TW(">")), bytes(TW("\xFF1E")), bytes(TW("\xD842\xDFB7")), bytes(TW("\xD842"))}},
    };
    std::mt19937 random(1);
    for (const auto& a : alphabets) {
        for (int round = 0; round < 20; ++round) {
            QuoteTable table;
            std::vector<Characters> entries;
            for (int i = 0; i < 200; ++i) {
                Characters prefix(1 + random() % 4);
                std::string text;
                for (std::string& character : prefix)
                    text += character = a.alphabet[random() % a.alphabet.size()];
                const auto known = std::find(entries.begin(), entries.end(), prefix);
                const int entry = Enter(table, text, a.codeType);
                ASSERT_EQ(entry, known - entries.begin());
                if (known != entries.end())
                    continue;
                std::set<int> taken;
                for (std::size_t k = 0; k < entries.size(); ++k) {
                    if (IsParent(entries[k], prefix) || IsParent(prefix, entries[k]))
                        taken.insert(table.GetLevel(static_cast<int>(k)));
                }
                entries.push_back(prefix);
                int level = entry % 4;
                while (taken.size() < 4 && taken.count(level) != 0)
                    level = (level + 1) % 4;
                ASSERT_EQ(table.GetLevel(entry), level);
            }
        }
    }
}

// Each is found again after the table has grown.
TEST(QuoteTable, TakesManyPrefixes)
{
    QuoteTable table;
    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ(Enter(table, ">" + std::to_string(i % 10000)), i % 10000);
}
