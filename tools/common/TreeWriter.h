// A tree of named values (objects, arrays, strings, numbers) written as JSON or
// as indented text: the commands that print records describe them once and pick
// the form at the end.
#pragma once
#include <string>
#include <vector>

namespace tesvorutil {

// Receives the records as a tree of named values; the text and JSON forms differ
// only here.
class Writer {
public:
    virtual ~Writer() = default;
    virtual void Begin(const wchar_t* name, bool isArray) = 0;   // name null inside arrays
    virtual void End(bool isArray) = 0;
    virtual void String(const wchar_t* name, const wchar_t* value) = 0;
    virtual void Number(const wchar_t* name, long long value) = 0;
    virtual void Bool(const wchar_t* name, bool value) = 0;
    virtual void Null(const wchar_t* name) = 0;
    virtual void Numbers(const wchar_t* name, const std::vector<long long>& values) = 0;

    const std::wstring& Text() const { return m_text; }

protected:
    std::wstring m_text;
};

class JsonWriter : public Writer {
public:
    void Begin(const wchar_t* name, bool isArray) override
    {
        Key(name);
        m_text += isArray ? L'[' : L'{';
        m_first.push_back(true);
    }
    void End(bool isArray) override
    {
        const bool empty = m_first.back();
        m_first.pop_back();
        if (!empty)
            NewLine();
        m_text += isArray ? L']' : L'}';
        if (m_first.empty())
            m_text += L'\n';
    }
    void String(const wchar_t* name, const wchar_t* value) override
    {
        Key(name);
        Quoted(value);
    }
    void Number(const wchar_t* name, long long value) override
    {
        Key(name);
        m_text += std::to_wstring(value);
    }
    void Bool(const wchar_t* name, bool value) override
    {
        Key(name);
        m_text += value ? L"true" : L"false";
    }
    void Null(const wchar_t* name) override
    {
        Key(name);
        m_text += L"null";
    }
    void Numbers(const wchar_t* name, const std::vector<long long>& values) override
    {
        Key(name);
        m_text += L'[';
        for (size_t i = 0; i < values.size(); ++i)
            m_text += (i ? L", " : L"") + std::to_wstring(values[i]);
        m_text += L']';
    }

private:
    void NewLine()
    {
        m_text += L'\n';
        m_text.append(2 * m_first.size(), L' ');
    }
    void Key(const wchar_t* name)
    {
        if (m_first.empty())
            return;
        if (!m_first.back())
            m_text += L',';
        m_first.back() = false;
        NewLine();
        if (name != nullptr) {
            Quoted(name);
            m_text += L": ";
        }
    }
    void Quoted(const wchar_t* value)
    {
        m_text += L'"';
        for (const wchar_t* c = value; *c; ++c) {
            if (*c == L'"' || *c == L'\\') {
                m_text += L'\\';
                m_text += *c;
            } else if (*c < 0x20) {
                static const wchar_t digits[] = L"0123456789abcdef";
                m_text += L"\\u00";
                m_text += digits[*c >> 4];
                m_text += digits[*c & 0xF];
            } else {
                m_text += *c;
            }
        }
        m_text += L'"';
    }

    std::vector<bool> m_first;   // per open object or array: nothing written yet
};

class TextWriter : public Writer {
public:
    void Begin(const wchar_t* name, bool isArray) override
    {
        if (!m_index.empty()) {
            Line(Label(name) + L":");
        }
        m_index.push_back(isArray ? 0 : -1);
    }
    void End(bool) override { m_index.pop_back(); }
    void String(const wchar_t* name, const wchar_t* value) override { Line(Label(name) + L": \"" + value + L"\""); }
    void Number(const wchar_t* name, long long value) override { Line(Label(name) + L": " + std::to_wstring(value)); }
    void Bool(const wchar_t* name, bool value) override { Line(Label(name) + (value ? L": true" : L": false")); }
    void Null(const wchar_t* name) override { Line(Label(name) + L": (none)"); }
    void Numbers(const wchar_t* name, const std::vector<long long>& values) override
    {
        std::wstring line = Label(name) + L":";
        for (size_t i = 0; i < values.size(); ++i)
            line += (i ? L", " : L" ") + std::to_wstring(values[i]);
        Line(line);
    }

private:
    std::wstring Label(const wchar_t* name)
    {
        if (name != nullptr || m_index.empty() || m_index.back() < 0)
            return name != nullptr ? name : L"";
        return L"[" + std::to_wstring(m_index.back()++) + L"]";
    }
    void Line(const std::wstring& text)
    {
        m_text.append(2 * (m_index.empty() ? 0 : m_index.size() - 1), L' ');
        m_text += text;
        m_text += L'\n';
    }

    std::vector<int> m_index;   // per open level: next array index, or -1 in an object
};

}  // namespace tesvorutil
