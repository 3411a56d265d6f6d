#include "framework/arrays.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

// Counts the objects that live, and owns storage so that a bitwise copy would be noticed.
class Counted {
public:
    static int s_live;

    Counted() : m_value(new int(0)) { s_live++; }
    explicit Counted(int value) : m_value(new int(value)) { s_live++; }
    Counted(const Counted& other) : m_value(new int(*other.m_value)) { s_live++; }
    Counted& operator=(const Counted& other)
    {
        *m_value = *other.m_value;
        return *this;
    }
    ~Counted()
    {
        delete m_value;
        s_live--;
    }
    int Value() const { return *m_value; }

private:
    int* m_value;
};
int Counted::s_live = 0;

// Random operations against a std::vector of ints.
TEST(Array, HoldsObjectsThroughAllOperations)
{
    std::mt19937 random(2);
    {
        CArray<Counted, const Counted&> array;
        std::vector<int> model;
        for (int round = 0; round < 5000; round++) {
            const int value = static_cast<int>(random() % 1000);
            const int size = array.GetSize();
            const int index = static_cast<int>(random() % static_cast<unsigned>(size + 3));
            const auto at = model.begin() + std::min(index, size);
            switch (random() % 6) {
            case 0:
                ASSERT_EQ(array.Add(Counted(value)), size);
                model.push_back(value);
                break;
            case 1:
                array.SetAtGrow(index, Counted(value));
                model.resize(static_cast<std::size_t>(std::max(size, index + 1)));
                model[static_cast<std::size_t>(index)] = value;
                break;
            case 2: {
                const int count = static_cast<int>(random() % 3);
                array.InsertAt(index, Counted(value), count);
                if (index > size)
                    model.resize(static_cast<std::size_t>(index));
                model.insert(model.begin() + index, static_cast<std::size_t>(count), value);
                break;
            }
            case 3:
                if (index < size) {
                    array.RemoveAt(index, 1);
                    model.erase(at);
                }
                break;
            case 4:
                if (size > 40) {
                    array.SetSize(index / 2, 200);
                    model.resize(static_cast<std::size_t>(index / 2));
                }
                break;
            default: {
                CArray<Counted, const Counted&> other;
                other.Copy(array);
                other.SetSize(std::min(size, 2));
                ASSERT_EQ(array.Append(other), size);
                const std::vector<int> copy(model.begin(), model.begin() + std::min(size, 2));
                model.insert(model.end(), copy.begin(), copy.end());
                break;
            }
            }
            ASSERT_EQ(array.GetSize(), static_cast<int>(model.size()));
            for (int i = 0; i < array.GetSize(); i++)
                ASSERT_EQ(array[i].Value(), model[static_cast<std::size_t>(i)]);
            ASSERT_EQ(Counted::s_live, array.GetSize());
        }
    }
    EXPECT_EQ(Counted::s_live, 0);
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
    EXPECT_STREQ(names[199], "");
}

TEST(Array, Limits)
{
    CUIntArray numbers;
    EXPECT_EQ(numbers.GetData(), nullptr);
    EXPECT_EQ(numbers.GetUpperBound(), -1);
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

    CUIntArray other;
    other.Add(7);
    numbers.InsertAt(1, &other);
    numbers.InsertAt(6, &other);
    EXPECT_EQ(numbers.GetSize(), 7);
    EXPECT_EQ(numbers[1] + numbers[6], 14u);
}

TEST(Array, TypedPointers)
{
    int a = 1, b = 2;
    CTypedPtrArray<CPtrArray, int*> pointers;
    pointers.Add(&a);
    pointers.InsertAt(0, &b);
    *pointers[0] += *pointers.GetAt(1);
    EXPECT_EQ(b, 3);
    pointers.SetSize(3);
    EXPECT_EQ(pointers[2], nullptr);
}

} // namespace
