#include "files/CMountTable.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <string_view>
#include <unistd.h>

// How often the table is read again because it changed meanwhile.
static const int READ_ATTEMPTS = 10;

// The fields of a line, counted from the left; optional fields follow up to a
// lone "-", behind which three more stand.
static const int FIELD_ID = 0;
static const int FIELD_PARENT = 1;
static const int FIELD_NUMBER = 2;
static const int FIELD_ROOT = 3;
static const int FIELD_POINT = 4;
static const int FIELD_OPTIONS = 5;
static const int FIELD_FIRST_OPTIONAL = 6;
static const int TYPE_BEHIND_DASH = 1;
static const int SOURCE_BEHIND_DASH = 2;
static const int OPTIONS_BEHIND_DASH = 3;

namespace {

/** An open file, closed at the end. */
class COpenFile
{
public:
    explicit COpenFile(const char* pszPath)
        : m_nDescriptor(open(pszPath, O_RDONLY | O_CLOEXEC))
    {
    }
    ~COpenFile()
    {
        if (m_nDescriptor != -1) {
            close(m_nDescriptor);
        }
    }
    COpenFile(const COpenFile&) = delete;
    COpenFile& operator=(const COpenFile&) = delete;

    /** All that is left to read; empty when it cannot be read to its end. */
    std::string ReadAll() const
    {
        std::string strText;
        std::array<char, 16384> part;
        for (;;) {
            const ssize_t nRead = read(m_nDescriptor, part.data(), part.size());
            if (nRead == 0 || (nRead < 0 && errno != EINTR)) {
                return nRead == 0 ? strText : std::string();
            }
            strText.append(part.data(), nRead < 0 ? 0 : size_t(nRead));
        }
    }

    /** Whether the table of mounts has changed since the file was opened. */
    bool HasChanged() const
    {
        pollfd request{m_nDescriptor, POLLPRI, 0};
        return poll(&request, 1, 0) > 0 && (request.revents & (POLLPRI | POLLERR)) != 0;
    }

private:
    const int m_nDescriptor;
};

} // namespace

const char* CMountTable::FileName() { return "/proc/self/mountinfo"; }

std::optional<std::vector<STMount>> CMountTable::Mounts()
{
    // The kernel hands the table out page by page. A change in between can hide
    // the line of a volume that is still there, which would look like its removal.
    std::string strText;
    for (int nAttempt = 0; nAttempt < READ_ATTEMPTS; ++nAttempt) {
        const COpenFile file(FileName());
        strText = file.ReadAll();
        if (!file.HasChanged()) {
            break;
        }
    }
    if (strText.empty()) {
        return std::nullopt;
    }
    return Parse(strText);
}

/** The parts of a text between such characters, of which each parts two; a part may be empty. */
static std::vector<std::string_view> Split(std::string_view strText, char ch)
{
    std::vector<std::string_view> listPart;
    for (size_t nBegin = 0; nBegin <= strText.size();) {
        const size_t nEnd = std::min(strText.find(ch, nBegin), strText.size());
        listPart.push_back(strText.substr(nBegin, nEnd - nBegin));
        nBegin = nEnd + 1;
    }
    return listPart;
}

static std::optional<std::int64_t> Number(std::string_view strField)
{
    std::int64_t nNumber = 0;
    const char* const pEnd = strField.data() + strField.size();
    const auto [pRead, enError] = std::from_chars(strField.data(), pEnd, nNumber);
    if (enError != std::errc() || pRead != pEnd) {
        return std::nullopt;
    }
    return nNumber;
}

/** The byte that "\" and three octal digits stand for, from the digits on; 0 when they stand for none. */
static char EscapedByte(std::string_view strDigits)
{
    int nByte = 0;
    for (const char ch : strDigits) {
        if (ch < '0' || ch > '7') {
            return 0;
        }
        nByte = nByte * 8 + (ch - '0');
    }
    return strDigits.size() == 3 && nByte <= 0xff ? char(nByte) : '\0';
}

/**
 * The kernel writes blank, tab, line end, "\" and in sources "#" as "\" and three
 * octal digits, and everything else as it is. As it escapes each "\" of a name, a
 * name cannot pretend to hold an escape. A "\" that begins none stays; so does one
 * that would give a zero byte, at which the name would end for the system.
 */
static std::string Unescaped(std::string_view strField)
{
    std::string strPlain;
    strPlain.reserve(strField.size());
    for (size_t i = 0; i < strField.size(); ++i) {
        const char chEscaped = strField[i] == '\\' ? EscapedByte(strField.substr(i + 1, 3)) : '\0';
        strPlain += chEscaped == '\0' ? strField[i] : chEscaped;
        i += chEscaped == '\0' ? 0 : 3;
    }
    return strPlain;
}

static bool HasOption(std::string_view strOptions, std::string_view strOption)
{
    const std::vector<std::string_view> listOption = Split(strOptions, ',');
    return std::find(listOption.begin(), listOption.end(), strOption) != listOption.end();
}

static std::optional<STMount> ParseLine(std::string_view strLine)
{
    const std::vector<std::string_view> listField = Split(strLine, ' ');
    if (listField.size() <= size_t(FIELD_FIRST_OPTIONAL)) {
        return std::nullopt;
    }
    const auto dash = std::find(listField.begin() + FIELD_FIRST_OPTIONAL, listField.end(), "-");
    const std::optional<std::int64_t> nId = Number(listField[FIELD_ID]);
    const std::optional<std::int64_t> nParentId = Number(listField[FIELD_PARENT]);
    if (std::distance(dash, listField.end()) <= OPTIONS_BEHIND_DASH || !nId || !nParentId) {
        return std::nullopt;
    }
    STMount stMount;
    stMount.nId = *nId;
    stMount.nParentId = *nParentId;
    stMount.strNumber = listField[FIELD_NUMBER];
    stMount.strRoot = Unescaped(listField[FIELD_ROOT]);
    stMount.strPoint = Unescaped(listField[FIELD_POINT]);
    stMount.strType = Unescaped(dash[TYPE_BEHIND_DASH]);
    stMount.strSource = Unescaped(dash[SOURCE_BEHIND_DASH]);
    stMount.bReadOnly
        = HasOption(listField[FIELD_OPTIONS], "ro") || HasOption(dash[OPTIONS_BEHIND_DASH], "ro");
    return stMount;
}

std::vector<STMount> CMountTable::Parse(const std::string& strText)
{
    std::vector<STMount> listMount;
    for (const std::string_view strLine : Split(strText, '\n')) {
        if (std::optional<STMount> stMount = ParseLine(strLine)) {
            listMount.push_back(std::move(*stMount));
        }
    }
    return listMount;
}
