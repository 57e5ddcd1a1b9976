#include "MCStreamMan.h"

#include <cstring>
#include "frame/Owners.h"

namespace {

[[noreturn]] void Throw(HRESULT hr) { throw static_cast<long>(hr); }

}  // namespace

CComPtr<IStream> MCStreamMan::Create(HGLOBAL memory, int deleteOnRelease)
{
    CComPtr<IStream> stream;
    HRESULT hr = ::CreateStreamOnHGlobal(memory, deleteOnRelease, &stream);
    if (FAILED(hr))
        Throw(hr);
    return stream;
}

MCStreamMan::MCStreamMan(int deleteOnRelease)
{
    try {
        m_stream = Create(NULL, deleteOnRelease);
    } catch (...) {
        Throw(E_FAIL);
    }
}

MCStreamMan::MCStreamMan(const unsigned short* data, DWORD size, int deleteOnRelease)
{
    UniqueHGlobal memory(::GlobalAlloc(GMEM_MOVEABLE, size));
    if (!memory)
        Throw(E_FAIL);
    if (size != 0) {
        UniqueGlobalLock lock(memory.get());
        if (lock.Data() == NULL)
            Throw(E_FAIL);
        std::memcpy(lock.Data(), data, size);
    }
    m_stream = Create(memory.get(), deleteOnRelease);
    // The stream holds the block now: it frees it when deleteOnRelease is set,
    // else the block is the caller's (GetBuffer).
    memory.release();
    ULARGE_INTEGER newSize;
    newSize.QuadPart = size;
    HRESULT hr = m_stream->SetSize(newSize);
    if (hr != S_OK)
        Throw(hr);
}

void* MCStreamMan::GetBuffer()
{
    HGLOBAL memory = NULL;
    HRESULT hr = ::GetHGlobalFromStream(m_stream, &memory);
    if (FAILED(hr))
        Throw(hr);
    return memory;
}

HRESULT MCStreamMan::GetIStream(IStream** out)
{
    if (out == NULL)
        return E_POINTER;
    // The caller learns of a failed query from the null pointer it gets.
    m_stream->QueryInterface(IID_IStream, reinterpret_cast<void**>(out));
    return S_OK;
}

DWORD MCStreamMan::GetSize()
{
    if (!m_stream)
        return 0;
    STATSTG stat = {};
    if (FAILED(m_stream->Stat(&stat, STATFLAG_NONAME)))
        return 0;
    return stat.cbSize.LowPart;
}

int MCStreamMan::SetSize(DWORD size)
{
    if (!m_stream)
        return 0;
    ULARGE_INTEGER newSize;
    newSize.QuadPart = size;
    return m_stream->SetSize(newSize) == S_OK ? 1 : 0;
}

DWORD MCStreamMan::GetPosition()
{
    LARGE_INTEGER zero = {};
    ULARGE_INTEGER position = {};
    HRESULT hr = m_stream->Seek(zero, STREAM_SEEK_CUR, &position);
    // A position past 4 GB does not fit the result: the seek's own (success) code is thrown.
    if (FAILED(hr) || position.HighPart != 0)
        Throw(hr);
    return position.LowPart;
}

int MCStreamMan::SetPosition(DWORD position)
{
    LARGE_INTEGER move;
    move.QuadPart = position;
    if (m_stream->Seek(move, STREAM_SEEK_SET, NULL) != S_OK)
        Throw(E_FAIL);
    return 1;
}

void MCStreamMan::Offset(long delta, MEOffsetFrom from)
{
    LARGE_INTEGER move;
    move.LowPart = static_cast<DWORD>(delta);
    move.HighPart = 0;
    DWORD origin = from == MEOffsetFromBegin     ? STREAM_SEEK_SET
                   : from == MEOffsetFromCurrent ? STREAM_SEEK_CUR
                                                 : STREAM_SEEK_END;
    HRESULT hr = m_stream->Seek(move, origin, NULL);
    if (hr != S_OK)
        Throw(hr);
}

long MCStreamMan::Write(BYTE* data, DWORD size)
{
    ULONG written = 0;
    HRESULT hr = m_stream->Write(data, size, &written);
    if (FAILED(hr) || written != size)
        Throw(hr);
    return static_cast<long>(written);
}

long MCStreamMan::Read(BYTE* data, DWORD size)
{
    ULONG read = 0;
    HRESULT hr = m_stream->Read(data, size, &read);
    if (FAILED(hr))
        Throw(hr);
    return static_cast<long>(read);
}

CString MCStreamMan::CopyBuffer()
{
    HGLOBAL memory = static_cast<HGLOBAL>(GetBuffer());
    CString text;
    UniqueGlobalLock lock(memory);
    int bytes = static_cast<int>(GetSize());
    if (lock.Data() == NULL || bytes == 0)
        return text;
    const char* source = static_cast<const char*>(lock.Data());
    int length = ::MultiByteToWideChar(CP_THREAD_ACP, 0, source, bytes, NULL, 0);
    if (length > 0) {
        ::MultiByteToWideChar(CP_THREAD_ACP, 0, source, bytes, text.GetBuffer(length), length);
        text.ReleaseBuffer(length);
    }
    return text;
}
