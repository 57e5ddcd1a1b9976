// MCStreamMan: a COM stream over movable global memory, for building a block
// of bytes and handing it to COM components as an IStream. Failures are thrown
// as the failing HRESULT, a plain `long`; SetSize, GetSize and GetIStream
// never throw. Copies share one stream.
#pragma once
#include <afx.h>
#include <atlbase.h>
#include "TesvorUtilExport.h"

// Origin of MCStreamMan::Offset; any other value counts as the end.
enum MEOffsetFrom {
    MEOffsetFromBegin = 0,
    MEOffsetFromCurrent = 1,
    MEOffsetFromEnd = 2
};

class TESVORUTIL_API MCStreamMan {
public:
    // An empty stream on new memory.
    explicit MCStreamMan(int deleteOnRelease = TRUE);
    // A stream holding a copy of `size` bytes at `data` (a byte count, whatever
    // the pointer's type), positioned at its start.
    MCStreamMan(const unsigned short* data, DWORD size, int deleteOnRelease = TRUE);

    // The stream's memory handle, not locked.
    void* GetBuffer();
    // E_POINTER for a null out; otherwise S_OK with the stream's IStream.
    HRESULT GetIStream(IStream** out);
    DWORD GetSize();
    // 1 when the stream took the new size, else 0.
    int SetSize(DWORD size);
    DWORD GetPosition();
    // Moves to an absolute position; throws E_FAIL when the stream refuses.
    int SetPosition(DWORD position);
    // Moves by delta from an origin. The delta is not sign-extended: a negative
    // delta is a large forward offset, so move backwards with SetPosition.
    void Offset(long delta, MEOffsetFrom from);
    // The count written; a short or failed write throws the call's result.
    long Write(BYTE* data, DWORD size);
    // The count read, less than size at the end of the stream.
    long Read(BYTE* data, DWORD size);
    // The whole stream, whatever the position, from the default multi-byte
    // code page to UTF-16.
    CString CopyBuffer();

private:
    static CComPtr<IStream> Create(HGLOBAL memory, int deleteOnRelease);

    CComPtr<IStream> m_stream;
};
