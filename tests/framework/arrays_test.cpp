#include "framework/arrays.h"
#include "tests/support/test.h"

namespace {

using Texts = CArray<std::string, const std::string&>; // would notice copies bit by bit

std::string Joined(const Texts& texts)
{
    std::string all;
    for (int i = 0; i < texts.GetSize(); i++)
        all += texts[i] + ",";
    return all;
}

TEST(Array, HoldsObjectsThroughAllOperations)
{
    Texts array, other;
    EXPECT_EQ(array.Add("b"), 0);
    array.InsertAt(0, "a", 2);
    array.InsertAt(5, "c"); // behind the end
    EXPECT_EQ(Joined(array), "a,a,b,,,c,");
    array.RemoveAt(1, 4);
    array.SetAtGrow(1, "d");
    array.SetAtGrow(3, "e");
    EXPECT_EQ(Joined(array), "a,d,,e,");
    other.Copy(array);
    other.SetSize(2, 200);
    EXPECT_EQ(array.Append(other), 4);
    array.InsertAt(1, &other);
    array.InsertAt(9, &other);
    EXPECT_EQ(Joined(array), "a,a,d,d,,e,a,d,,a,d,");
}

// An element of the array itself may be added while the storage moves.
TEST(Array, AddsItsOwnElements)
{
    CStringArray names;
    names.Add("first name, too long for a small buffer");
    for (int i = 0; i < 100; i++)
        names.Add(names[0]);
    names.InsertAt(1, names[0], 3);
    names.SetAtGrow(200, names[0]);
    EXPECT_STREQ(names[103], names[0]);
    EXPECT_STREQ(names[200], names[0]);
}

TEST(Array, Limits)
{
    CUIntArray numbers;
    EXPECT_EQ(numbers.GetData(), nullptr);
    numbers.SetSize(3);
    EXPECT_EQ(numbers[2], 0u);
    EXPECT_THROW(numbers.SetSize(-1), CInvalidArgException*);
    EXPECT_THROW(numbers.SetAtGrow(-1, 1), CInvalidArgException*);
    EXPECT_THROW(numbers.InsertAt(-1, 1), CInvalidArgException*);
    EXPECT_THROW(numbers.RemoveAt(2, 2), CInvalidArgException*);
    EXPECT_THROW(numbers.RemoveAt(1, INT_MAX), CInvalidArgException*);
    EXPECT_THROW(numbers.InsertAt(INT_MAX, 1, 1), CMemoryException*);
    EXPECT_THROW(numbers.Append(numbers), CInvalidArgException*);
    numbers.RemoveAt(3, 0);
    EXPECT_EQ(numbers.GetSize(), 3);
}

} // namespace
