// afxlite's arrays and hash maps: growth, order, bad arguments, buckets and node blocks.
#include <gtest/gtest.h>
#include <afxcoll.h>
#include <afxtempl.h>
#include <functional>
#include <set>
#include <vector>
#include "TestSupport.h"

namespace {

// Exposes the capacity that the growth policy chose.
class ProbeArray : public CArray<CString, const CString&> {
public:
    INT_PTR Capacity() const { return m_nMaxSize; }
};

TEST(CArrayTest, GrowsByAnEighthBetweenFourAnd1024)
{
    ProbeArray a, stepped;
    std::vector<INT_PTR> capacities;
    for (int i = 0; i < 100; i++) {
        a.Add(CString(L'x', i));
        if (i == 0 || i == 4 || i == 99)
            capacities.push_back(a.Capacity());
    }
    EXPECT_EQ((std::vector<INT_PTR>{4, 8, 109}), capacities);  // then an eighth more: 97 + 97 / 8
    stepped.SetSize(0, 10);
    stepped.Add(L"a");
    EXPECT_EQ(10, stepped.Capacity());
}

TEST(CArrayTest, InsertRemoveAndBadArguments)
{
    CStringArray a;
    auto joined = [&a] {
        CString out;
        for (INT_PTR i = 0; i < a.GetSize(); ++i)
            out += a[i] + L",";
        return out;
    };
    for (const wchar_t* s : {L"a", L"b", L"c"})
        a.Add(s);
    a.InsertAt(1, CString(L"x"), 2);
    EXPECT_STREQ(L"a,x,x,b,c,", joined());
    a.InsertAt(0, a[4]);  // the element comes from the array itself
    EXPECT_STREQ(L"c,a,x,x,b,c,", joined());
    a.RemoveAt(1, 3);
    EXPECT_STREQ(L"c,b,c,", joined());
    a.InsertAt(7, CString(L"far"));  // past the end: the gap is filled with empty strings
    EXPECT_STREQ(L"c,b,c,,,,,far,", joined());
    a.RemoveAt(3, 5);  // up to the last element
    EXPECT_STREQ(L"c,b,c,", joined());
    a.SetSize(2);
    EXPECT_STREQ(L"c,b,", joined());

    // Bad indexes and sizes change nothing.
    const std::function<void()> calls[] = {
        [&] { a.SetSize(-1); }, [&] { a.GetAt(2); }, [&] { a.GetAt(-1); }, [&] { a.RemoveAt(1, 2); },
        [&] { a.SetAtGrow(-1, L"x"); },
    };
    for (const auto& call : calls)
        EXPECT_TRUE(Throws<CInvalidArgException>(call)) << "call " << &call - calls;
    EXPECT_STREQ(L"c,b,", joined());
    a.RemoveAll();
    EXPECT_TRUE(a.IsEmpty());
}

// Exposes the node blocks of the map and its keys in iteration order.
class ProbeMap : public CMap<int, int, CString, const CString&> {
public:
    explicit ProbeMap(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    int Blocks() const
    {
        int n = 0;
        for (CPlex* p = m_pBlocks; p != NULL; p = p->pNext)
            n++;
        return n;
    }
    std::vector<int> Keys() const
    {
        std::vector<int> keys;
        for (POSITION pos = GetStartPosition(); pos != NULL;) {
            int key;
            CString value;
            GetNextAssoc(pos, key, value);
            keys.push_back(key);
        }
        return keys;
    }
};

TEST(CMapTest, HashesSeventeenBucketsNewestFirstNodesInBlocks)
{
    // Integers are shifted right by four; strings multiply by 33 per character, case kept.
    EXPECT_EQ((Values{0x123, 0, 0, L'a' * 33 + L'B', HashKey<LPCWSTR>(L"some key")}),
              (Values{HashKey<int>(0x1234), HashKey<int>(0xF), HashKey<LPCWSTR>(L""), HashKey<LPCWSTR>(L"aB"),
                      HashKey<const CString&>(CString(L"some key"))}));
    ProbeMap map(2), wide;
    // 0x10 and 0x120 share bucket 1 (hashes 1 and 18) of seventeen; 0x20 is alone in bucket 2.
    map[0x20] = L"b";
    map[0x10] = L"a1";
    map[0x120] = L"a2";
    EXPECT_EQ((std::vector<int>{0x120, 0x10, 0x20}), map.Keys());
    // Nodes come in blocks of the given size; a freed node is used again.
    map[0x30] = L"x";
    map[0x40] = L"x";
    EXPECT_EQ(3, map.Blocks());
    map.RemoveKey(0x10);
    map[100] = L"reuses the freed node";
    EXPECT_EQ(3, map.Blocks());

    wide.InitHashTable(101);
    EXPECT_EQ(101u, wide.GetHashTableSize());
    for (int i = 0; i < 1000; i++)
        wide[i * 16] = L"x";
    // Blocks of ten nodes unless the map is told otherwise.
    EXPECT_EQ((Values{1000, 1, 100}), (Values{wide.GetCount(), wide.PLookup(999 * 16) != nullptr, wide.Blocks()}));
}

TEST(CMapTest, LookupSetAtRemoveKeyAndIteration)
{
    ProbeMap map;
    EXPECT_EQ(nullptr, map.GetStartPosition());
    std::multiset<int> expected;
    for (int i = 0; i < 200; i += 3) {
        map.SetAt(i, CString(L'v', i % 7));
        expected.insert(i);
    }
    map.SetAt(3, L"replaced");
    EXPECT_EQ(static_cast<INT_PTR>(expected.size()), map.GetCount());
    // A missing key leaves the value as it was.
    CString value;
    EXPECT_EQ((Values{1, 0, 0, 1, 0}), (Values{map.Lookup(3, value), map.Lookup(4, value), map.PLookup(4) != nullptr,
                                               map.RemoveKey(6), map.RemoveKey(6)}));
    EXPECT_STREQ(L"replaced", value);
    expected.erase(6);
    std::vector<int> keys = map.Keys();
    EXPECT_EQ(expected, std::multiset<int>(keys.begin(), keys.end()));  // each key once
    for (int key : expected)
        EXPECT_TRUE(map.RemoveKey(key));
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(0, map.Blocks());  // the last removal frees every block
    map[1] = L"again";
    EXPECT_STREQ(L"again", map[1]);
}

}  // namespace
