// XmlLite, the platform's pull parser, which knows the line and column of every
// node and of every fault. This tool chain has no import library for it, so it
// is bound at run time; the DLL stays loaded for the life of the process.
#pragma once
#include <windows.h>
#include <objidl.h>
#include <xmllite.h>
#include <comdef.h>
#include <afx.h>

_COM_SMARTPTR_TYPEDEF(IStream, __uuidof(IStream));
_COM_SMARTPTR_TYPEDEF(IXmlReader, __uuidof(IXmlReader));

namespace tesvorutil {

// A file opened for reading as a stream.
HRESULT OpenFileStream(const wchar_t* path, IStreamPtr& stream);

// A reader over input that processes a document type declaration as the DOM
// does. Fails with the loader's error when XmlLite is not there.
HRESULT CreateXmlLiteReader(IStream* input, IXmlReaderPtr& reader);

// Why a document is not well-formed: XmlLite reports it only as a code.
CString XmlFaultText(HRESULT hr);

// The system's text for a failure code, without its line end.
CString SystemText(HRESULT hr);

}  // namespace tesvorutil
