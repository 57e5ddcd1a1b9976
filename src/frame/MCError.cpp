#include "MCError.h"

MCError::MCError() {}
MCError::MCError(const MCError& other) : m_strError(other.m_strError) {}

MCError& MCError::operator=(const MCError& other)
{
    m_strError = other.m_strError;
    return *this;
}

MCError::~MCError() {}
