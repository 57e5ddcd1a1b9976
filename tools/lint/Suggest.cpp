// "Did you mean": the known name a misspelt one is closest to.
#include "LintChecks.h"
#include <algorithm>
#include <cwctype>

namespace uilint {
namespace {

size_t EditDistance(const std::wstring& a, const std::wstring& b)
{
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

std::wstring Lower(std::wstring text)
{
    for (wchar_t& c : text)
        c = static_cast<wchar_t>(towlower(c));
    return text;
}

}  // namespace

const wchar_t* Suggest(const std::wstring& word, const std::vector<const wchar_t*>& candidates)
{
    const std::wstring lower = Lower(word);
    // Short names are close to too much: one edit for them, two for longer ones.
    const size_t allowed = word.size() <= 4 ? 1 : 2;
    const wchar_t* best = nullptr;
    size_t bestDistance = allowed + 1;
    bool tie = false;
    for (const wchar_t* candidate : candidates) {
        const size_t distance = EditDistance(lower, Lower(candidate));
        if (distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
            tie = false;
        } else if (distance == bestDistance && best != nullptr && wcscmp(best, candidate) != 0) {
            tie = true;
        }
    }
    return tie ? nullptr : best;
}

std::wstring DidYouMean(const std::wstring& word, const std::vector<const wchar_t*>& candidates, bool quoteDouble)
{
    const wchar_t* suggestion = Suggest(word, candidates);
    if (suggestion == nullptr)
        return std::wstring();
    return L" (did you mean " + (quoteDouble ? Quoted(suggestion) : Named(suggestion)) + L"?)";
}

}  // namespace uilint
