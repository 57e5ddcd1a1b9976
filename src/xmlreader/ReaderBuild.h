// Shared by the record builders of the reader.
#pragma once
#include "MCXMLReader.h"

// Ends the enclosing builder with the result of the first conversion that fails.
#define READER_RETURN_IF_FAILED(expr)          \
    do {                                       \
        const HRESULT hrConversion_ = (expr);  \
        if (FAILED(hrConversion_))             \
            return hrConversion_;              \
    } while (0)

