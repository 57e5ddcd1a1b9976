#include <gtest/gtest.h>
#include <climits>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include "MCStreamMan.h"
#include "ScopedImportHook.h"
#include "TestSupport.h"
#include "VtableSlotPatch.h"

namespace {

// "= value" for what an operation returns, "! hresult" for the long it throws.
std::string Outcome(const std::function<long long()>& operation)
{
    char text[32];
    try {
        std::snprintf(text, sizeof(text), "= %lld", operation());
    } catch (long hr) {
        std::snprintf(text, sizeof(text), "! %08lx", static_cast<unsigned long>(hr));
    }
    return text;
}

MCStreamMan FromBytes(const char* bytes, DWORD size, int deleteOnRelease = TRUE)
{
    return MCStreamMan(reinterpret_cast<const unsigned short*>(bytes), size, deleteOnRelease);
}

}  // namespace

TEST(StreamTest, ReadsWritesMovesAndSharesItsMemory)
{
    BYTE buffer[10] = {}, data[] = {'a', 'b', 'c', 'd'};
    MCStreamMan made = FromBytes("12345", 5), empty;
    // size, position, read, position, read again
    EXPECT_EQ((Values{5, 0, 5, 5, 0}), (Values{made.GetSize(), made.GetPosition(), made.Read(buffer, 10),
                                               made.GetPosition(), made.Read(buffer, 10)}));
    EXPECT_EQ(0, memcmp("12345", buffer, 5));
    EXPECT_EQ(0, empty.Read(buffer, 10));
    // Writes grow the stream; backwards by one goes through SetPosition.
    EXPECT_EQ((Values{0, 0, 4, 4, 8, 8, 1, 3, 1, 6, 1, 2, 1, 2}),
              (Values{empty.Write(data, 0), empty.GetSize(), empty.Write(data, 4), empty.Write(data, 4),
                      empty.GetSize(), empty.GetPosition(), empty.SetSize(3), empty.GetSize(), empty.SetSize(6),
                      empty.GetSize(), empty.SetPosition(1), empty.Read(buffer, 2),
                      empty.SetPosition(empty.GetPosition() - 1), empty.GetPosition()}));
    EXPECT_EQ(0, memcmp("bc", buffer, 2));

    // Offsets from each origin (any other origin is the end). -1 becomes 0xFFFFFFFF forward,
    // which the memory stream refuses from 0; so does any delta with its top bit set.
    MCStreamMan digits = FromBytes("0123456789", 10);
    const struct {
        long delta;
        int from;
        const char* outcome;
    } offsets[] = {{4, MEOffsetFromBegin, "= 4"},
                   {3, MEOffsetFromCurrent, "= 7"},
                   {0, MEOffsetFromEnd, "= 10"},
                   {2, 7, "= 12"},
                   {-1, MEOffsetFromCurrent, "! 80030019"},
                   {LONG_MIN, MEOffsetFromBegin, "! 80030019"}};
    for (const auto& o : offsets) {
        if (o.outcome[0] == '!')
            digits.SetPosition(0);
        std::string outcome = Outcome([&] {
            digits.Offset(o.delta, MEOffsetFrom(o.from));
            return digits.GetPosition();
        });
        EXPECT_EQ(o.outcome, outcome) << o.delta << " from " << o.from;
    }
    EXPECT_EQ(0u, digits.GetPosition());

    // Copies and interfaces share one stream.
    MCStreamMan stream = FromBytes("xy", 2);
    MCStreamMan copy(stream), assigned;
    copy.Offset(0, MEOffsetFromEnd);
    copy.Write(data, 1);
    assigned = stream;
    CComPtr<IStream> raw;
    STATSTG stat = {};
    EXPECT_EQ((Values{3, 3, 3, E_POINTER, S_OK}), (Values{stream.GetSize(), stream.GetPosition(), assigned.GetSize(),
                                                          stream.GetIStream(NULL), stream.GetIStream(&raw)}));
    ASSERT_NE(nullptr, raw.p);
    raw->Stat(&stat, STATFLAG_NONAME);
    EXPECT_EQ(3u, stat.cbSize.LowPart);

    // Not deleted on release: the memory and its bytes outlive the stream.
    HGLOBAL memory = FromBytes("abc", 3, FALSE).GetBuffer();
    ASSERT_NE(nullptr, memory);
    EXPECT_GE(::GlobalSize(memory), 3u);
    EXPECT_EQ(0, memcmp("abc", ::GlobalLock(memory), 3));
    ::GlobalUnlock(memory);
    ::GlobalFree(memory);
}

TEST(StreamTest, CopyBufferConvertsTheWholeStreamFromAnyPosition)
{
    MCStreamMan stream = FromBytes("AB", 2);
    CString atStart = stream.CopyBuffer();
    stream.Offset(0, MEOffsetFromEnd);
    CString atEnd = stream.CopyBuffer();
    EXPECT_EQ(2u, stream.GetPosition());
    stream.SetPosition(1);
    EXPECT_EQ(L"AB AB AB", atStart + L" " + atEnd + L" " + stream.CopyBuffer());
    // Only the stream's size counts, not the capacity of its memory.
    MCStreamMan shrunk = FromBytes("abcdef", 6);
    shrunk.SetSize(2);
    EXPECT_EQ(L"ab", shrunk.CopyBuffer() + MCStreamMan().CopyBuffer() + FromBytes("", 0).CopyBuffer());

    // Bytes are text of the default code page, zero bytes included.
    const char bytes[] = {'\xE9', '\x80', 'A', '\0', 'B'};
    wchar_t expected[5] = {};
    ASSERT_EQ(5, ::MultiByteToWideChar(CP_THREAD_ACP, 0, bytes, 5, expected, 5));
    CString converted = FromBytes(bytes, 5).CopyBuffer();
    EXPECT_EQ(std::wstring(expected, 5), std::wstring(converted.GetString(), converted.GetLength()));
}

namespace {

// The stream's calls made to answer as the test chooses: a slot of the memory stream's
// function table (shared by every such stream) at a time, or one of the library's imports.
HRESULT g_result;
ULONGLONG g_value;
template <class T>
HRESULT Answer(T* out, T value)
{
    if (out != NULL)
        *out = value;
    return g_result;
}
HRESULT STDMETHODCALLTYPE FakeQuery(IStream*, REFIID, void** out) { return Answer<void*>(out, NULL); }
HRESULT STDMETHODCALLTYPE FakeTransfer(IStream*, void*, ULONG, ULONG* count) { return Answer(count, ULONG(g_value)); }
HRESULT STDMETHODCALLTYPE FakeSeek(IStream*, LARGE_INTEGER, DWORD, ULARGE_INTEGER* at)
{
    return Answer(at, ULARGE_INTEGER{{DWORD(g_value), DWORD(g_value >> 32)}});
}
HRESULT STDMETHODCALLTYPE FakeSetSize(IStream*, ULARGE_INTEGER) { return g_result; }
HRESULT STDMETHODCALLTYPE FakeStat(IStream*, STATSTG* stat, DWORD)
{
    STATSTG sized = {};
    sized.cbSize.QuadPart = g_value;
    return Answer(stat, sized);
}
HRESULT WINAPI FakeCreateStreamOnHGlobal(HGLOBAL memory, BOOL deleteOnRelease, IStream** out)
{
    if (memory != NULL && deleteOnRelease)
        ::GlobalFree(memory);
    return Answer<IStream*>(out, NULL);
}
HRESULT WINAPI FakeGetHGlobalFromStream(IStream*, HGLOBAL* memory) { return Answer<HGLOBAL>(memory, NULL); }

}  // namespace

TEST(StreamTest, EachFailureIsReturnedOrThrownAsItShouldBe)
{
    enum Slot { Query = 0, Read = 3, Write = 4, Seek = 5, SetSize = 6, Stat = 12, CreateImport, BufferImport };
    MCStreamMan stream;
    CComPtr<IStream> memoryStream;  // for its function table
    ASSERT_EQ(S_OK, ::CreateStreamOnHGlobal(NULL, TRUE, &memoryStream));
    BYTE buffer[8] = {};
    IStream* out = reinterpret_cast<IStream*>(1);  // to be cleared
    auto offsetByOne = [&](MEOffsetFrom from) {
        return [&stream, from] {
            stream.Offset(1, from);
            return 0;
        };
    };
    const struct {
        Slot slot;
        HRESULT result;
        ULONGLONG value;
        std::function<long long()> operation;
        const char* outcome;
    } cases[] = {
        {Stat, S_OK, 77, [&] { return stream.GetSize(); }, "= 77"},
        {Stat, STG_E_ACCESSDENIED, 77, [&] { return stream.GetSize(); }, "= 0"},
        {SetSize, S_FALSE, 0, [&] { return stream.SetSize(5); }, "= 0"},
        {SetSize, E_OUTOFMEMORY, 0, [&] { return stream.SetSize(5); }, "= 0"},
        {Query, E_NOINTERFACE, 0, [&] { return stream.GetIStream(&out) + (out != NULL); }, "= 0"},
        {Seek, STG_E_INVALIDFUNCTION, 0, [&] { return stream.GetPosition(); }, "! 80030001"},
        {Seek, STG_E_INVALIDFUNCTION, 0, [&] { return stream.SetPosition(1); }, "! 80004005"},
        {Seek, STG_E_INVALIDFUNCTION, 0, offsetByOne(MEOffsetFromBegin), "! 80030001"},
        // Success codes other than S_OK count as failures where S_OK is asked for.
        {Seek, S_FALSE, 0, [&] { return stream.SetPosition(1); }, "! 80004005"},
        {Seek, S_FALSE, 0, offsetByOne(MEOffsetFromCurrent), "! 00000001"},
        // A position at or past 4 GB is thrown as the seek's own result.
        {Seek, S_OK, 0x100000000ull, [&] { return stream.GetPosition(); }, "! 00000000"},
        {Seek, S_OK, 0xFFFFFFFFull, [&] { return stream.GetPosition(); }, "= 4294967295"},
        {Write, S_OK, 8, [&] { return stream.Write(buffer, 8); }, "= 8"},
        {Write, S_OK, 3, [&] { return stream.Write(buffer, 8); }, "! 00000000"},  // short, with success
        {Write, STG_E_MEDIUMFULL, 8, [&] { return stream.Write(buffer, 8); }, "! 80030070"},
        {Read, S_FALSE, 3, [&] { return stream.Read(buffer, 8); }, "= 3"},
        {Read, STG_E_READFAULT, 3, [&] { return stream.Read(buffer, 8); }, "! 8003001e"},
        {SetSize, STG_E_MEDIUMFULL, 0, [] { return FromBytes("abc", 3).GetSize(); }, "! 80030070"},
        {SetSize, S_FALSE, 0, [] { return FromBytes("abc", 3).GetSize(); }, "! 00000001"},
        {CreateImport, E_OUTOFMEMORY, 0, [] { return MCStreamMan().GetSize(); }, "! 80004005"},
        {CreateImport, E_OUTOFMEMORY, 0, [] { return FromBytes("abc", 3).GetSize(); }, "! 8007000e"},
        {BufferImport, E_INVALIDARG, 0, [&] { return stream.GetBuffer() != NULL; }, "! 80070057"},
        {BufferImport, E_INVALIDARG, 0, [&] { return stream.CopyBuffer().GetLength(); }, "! 80070057"},
    };
    std::map<Slot, void*> fakes = {
        {Query, reinterpret_cast<void*>(&FakeQuery)},     {Read, reinterpret_cast<void*>(&FakeTransfer)},
        {Write, reinterpret_cast<void*>(&FakeTransfer)},  {Seek, reinterpret_cast<void*>(&FakeSeek)},
        {SetSize, reinterpret_cast<void*>(&FakeSetSize)}, {Stat, reinterpret_cast<void*>(&FakeStat)}};
    for (const auto& c : cases) {
        g_result = c.result;
        g_value = c.value;
        std::unique_ptr<ScopedImportHook> hook;
        std::unique_ptr<VtableSlotPatch> patch;
        if (c.slot == CreateImport)
            hook.reset(new ScopedImportHook(TesvorUtilModule(), "ole32.dll", "CreateStreamOnHGlobal",
                                            &FakeCreateStreamOnHGlobal));
        else if (c.slot == BufferImport)
            hook.reset(new ScopedImportHook(TesvorUtilModule(), "ole32.dll", "GetHGlobalFromStream",
                                            &FakeGetHGlobalFromStream));
        else
            patch.reset(new VtableSlotPatch(memoryStream, c.slot, fakes[c.slot]));
        EXPECT_EQ(c.outcome, Outcome(c.operation)) << "slot " << c.slot << ", result " << std::hex << c.result;
    }
}
