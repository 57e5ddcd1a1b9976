#include <gtest/gtest.h>
#include <climits>
#include <cstring>
#include "ScopedImportHook.h"
#include "MCStreamMan.h"

namespace {

const HRESULT kSeekError = STG_E_SEEKERROR;

// Runs f and returns the long it throws; fails the test when it returns.
template <class F>
long ThrownBy(F f)
{
    try {
        f();
    } catch (long hr) {
        return hr;
    }
    ADD_FAILURE() << "nothing was thrown";
    return 0x7FFFFFFF;
}

MCStreamMan FromBytes(const char* bytes, DWORD size)
{
    return MCStreamMan(reinterpret_cast<const unsigned short*>(bytes), size, TRUE);
}

}  // namespace

TEST(StreamTest, MadeFromBytesStartsAtTheBeginning)
{
    MCStreamMan stream = FromBytes("12345", 5);
    EXPECT_EQ(5u, stream.GetSize());
    EXPECT_EQ(0u, stream.GetPosition());

    BYTE buffer[10] = {};
    EXPECT_EQ(5, stream.Read(buffer, sizeof(buffer)));
    EXPECT_EQ(0, memcmp("12345", buffer, 5));
    EXPECT_EQ(5u, stream.GetPosition());
    EXPECT_EQ(0, stream.Read(buffer, sizeof(buffer)));

    MCStreamMan empty;
    EXPECT_EQ(0u, empty.GetSize());
    EXPECT_EQ(0u, empty.GetPosition());
    EXPECT_EQ(0, empty.Read(buffer, sizeof(buffer)));
    MCStreamMan none = FromBytes("", 0);
    EXPECT_EQ(0u, none.GetSize());
}

TEST(StreamTest, WritesGrowTheStreamAndMoveThePosition)
{
    MCStreamMan stream;
    BYTE data[] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(0, stream.Write(data, 0));
    EXPECT_EQ(0u, stream.GetSize());
    EXPECT_EQ(4, stream.Write(data, 4));
    EXPECT_EQ(4, stream.Write(data, 4));
    EXPECT_EQ(8u, stream.GetSize());
    EXPECT_EQ(8u, stream.GetPosition());

    EXPECT_EQ(1, stream.SetSize(3));
    EXPECT_EQ(3u, stream.GetSize());
    EXPECT_EQ(1, stream.SetSize(6));
    EXPECT_EQ(6u, stream.GetSize());

    EXPECT_EQ(1, stream.SetPosition(1));
    BYTE buffer[8] = {};
    EXPECT_EQ(2, stream.Read(buffer, 2));
    EXPECT_EQ(0, memcmp("bc", buffer, 2));
    // Backwards by one goes through SetPosition.
    EXPECT_EQ(1, stream.SetPosition(stream.GetPosition() - 1));
    EXPECT_EQ(2u, stream.GetPosition());
}

TEST(StreamTest, OffsetMovesFromEachOriginWithoutSignExtension)
{
    MCStreamMan stream = FromBytes("0123456789", 10);
    stream.Offset(4, MEOffsetFromBegin);
    EXPECT_EQ(4u, stream.GetPosition());
    stream.Offset(3, MEOffsetFromCurrent);
    EXPECT_EQ(7u, stream.GetPosition());
    stream.Offset(0, MEOffsetFromEnd);
    EXPECT_EQ(10u, stream.GetPosition());
    stream.Offset(2, static_cast<MEOffsetFrom>(7));  // any other origin is the end
    EXPECT_EQ(12u, stream.GetPosition());

    // -1 becomes 0xFFFFFFFF forward, which the memory stream refuses from 0;
    // so does any delta with its top bit set from the beginning.
    stream.SetPosition(0);
    EXPECT_EQ(kSeekError, ThrownBy([&] { stream.Offset(-1, MEOffsetFromCurrent); }));
    EXPECT_EQ(kSeekError, ThrownBy([&] { stream.Offset(LONG_MIN, MEOffsetFromBegin); }));
    EXPECT_EQ(0u, stream.GetPosition());

    // SetPosition reports a refused seek as E_FAIL, not as the seek's result.
    EXPECT_EQ(E_FAIL, ThrownBy([&] { stream.SetPosition(0x80000000u); }));
}

TEST(StreamTest, CopiesAndInterfacesShareOneStream)
{
    MCStreamMan stream = FromBytes("xy", 2);
    MCStreamMan copy(stream);
    BYTE z = 'z';
    copy.Offset(0, MEOffsetFromEnd);
    copy.Write(&z, 1);
    EXPECT_EQ(3u, stream.GetSize());
    EXPECT_EQ(3u, stream.GetPosition());

    MCStreamMan assigned;
    assigned = stream;
    EXPECT_EQ(3u, assigned.GetSize());

    EXPECT_EQ(E_POINTER, stream.GetIStream(NULL));
    IStream* raw = NULL;
    EXPECT_EQ(S_OK, stream.GetIStream(&raw));
    ASSERT_NE(static_cast<IStream*>(NULL), raw);
    STATSTG stat = {};
    raw->Stat(&stat, STATFLAG_NONAME);
    EXPECT_EQ(3u, stat.cbSize.LowPart);
    raw->Release();
}

TEST(StreamTest, BufferIsTheMemoryHandle)
{
    HGLOBAL memory = NULL;
    {
        MCStreamMan stream(reinterpret_cast<const unsigned short*>("abc"), 3, FALSE);
        memory = static_cast<HGLOBAL>(stream.GetBuffer());
        ASSERT_NE(static_cast<HGLOBAL>(NULL), memory);
        EXPECT_GE(::GlobalSize(memory), 3u);
    }
    // Not deleted on release: the memory and its bytes outlive the stream.
    const char* bytes = static_cast<const char*>(::GlobalLock(memory));
    ASSERT_NE(static_cast<const char*>(NULL), bytes);
    EXPECT_EQ(0, memcmp("abc", bytes, 3));
    ::GlobalUnlock(memory);
    ::GlobalFree(memory);
}

TEST(StreamTest, CopyBufferConvertsTheWholeStreamFromAnyPosition)
{
    MCStreamMan stream = FromBytes("AB", 2);
    EXPECT_EQ(CString(L"AB"), stream.CopyBuffer());
    stream.Offset(0, MEOffsetFromEnd);
    EXPECT_EQ(CString(L"AB"), stream.CopyBuffer());
    EXPECT_EQ(2u, stream.GetPosition());
    stream.SetPosition(1);
    EXPECT_EQ(CString(L"AB"), stream.CopyBuffer());

    // Bytes are text of the default code page, zero bytes included.
    const char bytes[] = {'\xE9', '\x80', 'A', '\0', 'B'};
    MCStreamMan ansi = FromBytes(bytes, sizeof(bytes));
    wchar_t expected[5] = {};
    ASSERT_EQ(5, ::MultiByteToWideChar(CP_THREAD_ACP, 0, bytes, 5, expected, 5));
    if (::GetACP() == 1252) {
        EXPECT_EQ(L'\x00E9', expected[0]);
        EXPECT_EQ(L'\x20AC', expected[1]);
    }
    CString text = ansi.CopyBuffer();
    ASSERT_EQ(5, text.GetLength());
    EXPECT_EQ(0, wmemcmp(expected, text.GetString(), 5));

    MCStreamMan empty;
    EXPECT_TRUE(empty.CopyBuffer().IsEmpty());
    EXPECT_TRUE(FromBytes("", 0).CopyBuffer().IsEmpty());

    // Only the stream's size counts, not the capacity of its memory.
    MCStreamMan shrunk = FromBytes("abcdef", 6);
    shrunk.SetSize(2);
    EXPECT_EQ(CString(L"ab"), shrunk.CopyBuffer());
}

// A stream whose every result the test chooses, to check what each operation
// throws or returns on failure.
class ScriptedStream : public IStream {
public:
    HRESULT queryResult = S_OK;
    HRESULT statResult = S_OK;
    HRESULT setSizeResult = S_OK;
    HRESULT seekResult = S_OK;
    ULONGLONG seekPosition = 0;
    HRESULT writeResult = S_OK;
    ULONG writeCount = 0;
    HRESULT readResult = S_OK;
    ULONG readCount = 0;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        *out = NULL;
        if (queryResult != S_OK)
            return queryResult;
        if (iid != IID_IUnknown && iid != IID_IStream && iid != IID_ISequentialStream)
            return E_NOINTERFACE;
        *out = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_refs; }
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG* read) override
    {
        *read = readCount;
        return readResult;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG* written) override
    {
        *written = writeCount;
        return writeResult;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER* position) override
    {
        if (position != NULL)
            position->QuadPart = seekPosition;
        return seekResult;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return setSizeResult; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD) override
    {
        std::memset(stat, 0, sizeof(*stat));
        stat->cbSize.QuadPart = 77;
        return statResult;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

    ULONG m_refs = 1;
};

// Makes the library's CreateStreamOnHGlobal hand out the scripted stream (or fail).
class ScriptedStreamTest : public ::testing::Test {
protected:
    static ScriptedStream* s_stream;
    static HRESULT s_createResult;

    static HRESULT WINAPI FakeCreateStreamOnHGlobal(HGLOBAL memory, BOOL deleteOnRelease, IStream** out)
    {
        if (memory != NULL && deleteOnRelease)
            ::GlobalFree(memory);
        *out = NULL;
        if (FAILED(s_createResult))
            return s_createResult;
        s_stream->AddRef();
        *out = s_stream;
        return S_OK;
    }

    void SetUp() override
    {
        s_stream = &m_stream;
        s_createResult = S_OK;
        ASSERT_TRUE(m_patch.Hooked());
    }
    void TearDown() override { EXPECT_EQ(1u, m_stream.m_refs); }

    ScriptedStream m_stream;
    ScopedImportHook m_patch{TesvorUtilModule(), "ole32.dll", "CreateStreamOnHGlobal", &FakeCreateStreamOnHGlobal};
};
ScriptedStream* ScriptedStreamTest::s_stream = NULL;
HRESULT ScriptedStreamTest::s_createResult = S_OK;

TEST_F(ScriptedStreamTest, ConstructionFailures)
{
    s_createResult = E_OUTOFMEMORY;
    EXPECT_EQ(E_FAIL, ThrownBy([] { MCStreamMan stream; }));
    EXPECT_EQ(E_OUTOFMEMORY, ThrownBy([] { FromBytes("abc", 3); }));

    s_createResult = S_OK;
    m_stream.setSizeResult = STG_E_MEDIUMFULL;
    EXPECT_EQ(STG_E_MEDIUMFULL, ThrownBy([] { FromBytes("abc", 3); }));
    m_stream.setSizeResult = S_FALSE;
    EXPECT_EQ(S_FALSE, ThrownBy([] { FromBytes("abc", 3); }));
}

TEST_F(ScriptedStreamTest, SizeAndInterfaceNeverThrow)
{
    MCStreamMan stream;
    EXPECT_EQ(77u, stream.GetSize());
    m_stream.statResult = STG_E_ACCESSDENIED;
    EXPECT_EQ(0u, stream.GetSize());

    EXPECT_EQ(1, stream.SetSize(5));
    m_stream.setSizeResult = S_FALSE;
    EXPECT_EQ(0, stream.SetSize(5));
    m_stream.setSizeResult = E_OUTOFMEMORY;
    EXPECT_EQ(0, stream.SetSize(5));

    IStream* out = reinterpret_cast<IStream*>(static_cast<UINT_PTR>(1));
    m_stream.queryResult = E_NOINTERFACE;
    EXPECT_EQ(S_OK, stream.GetIStream(&out));
    EXPECT_EQ(static_cast<IStream*>(NULL), out);
}

TEST_F(ScriptedStreamTest, PositionFailures)
{
    MCStreamMan stream;
    m_stream.seekResult = STG_E_INVALIDFUNCTION;
    EXPECT_EQ(STG_E_INVALIDFUNCTION, ThrownBy([&] { stream.GetPosition(); }));
    EXPECT_EQ(E_FAIL, ThrownBy([&] { stream.SetPosition(1); }));
    EXPECT_EQ(STG_E_INVALIDFUNCTION, ThrownBy([&] { stream.Offset(1, MEOffsetFromBegin); }));

    // Success codes other than S_OK count as failures where S_OK is asked for.
    m_stream.seekResult = S_FALSE;
    EXPECT_EQ(E_FAIL, ThrownBy([&] { stream.SetPosition(1); }));
    EXPECT_EQ(S_FALSE, ThrownBy([&] { stream.Offset(1, MEOffsetFromCurrent); }));

    // A position at or past 4 GB is thrown as the seek's own result.
    m_stream.seekResult = S_OK;
    m_stream.seekPosition = 0x100000000ull;
    EXPECT_EQ(S_OK, ThrownBy([&] { stream.GetPosition(); }));
    m_stream.seekPosition = 0xFFFFFFFFull;
    EXPECT_EQ(0xFFFFFFFFu, stream.GetPosition());
}

TEST_F(ScriptedStreamTest, ReadAndWriteFailures)
{
    MCStreamMan stream;
    BYTE buffer[8] = {};

    m_stream.writeCount = 8;
    EXPECT_EQ(8, stream.Write(buffer, 8));
    m_stream.writeCount = 3;  // short, with success
    EXPECT_EQ(S_OK, ThrownBy([&] { stream.Write(buffer, 8); }));
    m_stream.writeResult = STG_E_MEDIUMFULL;
    EXPECT_EQ(STG_E_MEDIUMFULL, ThrownBy([&] { stream.Write(buffer, 8); }));

    m_stream.readCount = 3;
    m_stream.readResult = S_FALSE;
    EXPECT_EQ(3, stream.Read(buffer, 8));
    m_stream.readResult = STG_E_READFAULT;
    EXPECT_EQ(STG_E_READFAULT, ThrownBy([&] { stream.Read(buffer, 8); }));

    // Not a memory stream: its handle cannot be had.
    HRESULT bufferError = ThrownBy([&] { stream.GetBuffer(); });
    EXPECT_TRUE(FAILED(bufferError));
    EXPECT_EQ(bufferError, ThrownBy([&] { stream.CopyBuffer(); }));
}
