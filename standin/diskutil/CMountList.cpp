#include "diskutil/CMountList.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

/** Fields parted by one blank each; a field may be empty. */
static std::vector<std::string> Fields(const std::string& strLine)
{
    std::vector<std::string> listField(1);
    for (const char ch : strLine) {
        if (ch == ' ') {
            listField.emplace_back();
        } else {
            listField.back() += ch;
        }
    }
    return listField;
}

static bool IsOctal(const std::string& strText, size_t nPos)
{
    return nPos + 3 < strText.size() && strText[nPos + 1] >= '0' && strText[nPos + 1] <= '3'
        && strText[nPos + 2] >= '0' && strText[nPos + 2] <= '7' && strText[nPos + 3] >= '0'
        && strText[nPos + 3] <= '7';
}

/** The kernel writes blanks, line ends and backslashes in names as "\040". */
static std::string Decode(const std::string& strText)
{
    std::string strResult;
    for (size_t i = 0; i < strText.size(); ++i) {
        if (strText[i] == '\\' && IsOctal(strText, i)) {
            strResult
                += char((strText[i + 1] - '0') * 64 + (strText[i + 2] - '0') * 8 + strText[i + 3] - '0');
            i += 3;
        } else {
            strResult += strText[i];
        }
    }
    return strResult;
}

static bool HasOption(const std::string& strOptions, const std::string& strOption)
{
    return ("," + strOptions + ",").find("," + strOption + ",") != std::string::npos;
}

/** A volume that the program shows comes first, then a whole file system before a folder of one. */
static int Rank(const STMount& mount)
{
    if (mount.strPoint.rfind("/Volumes/", 0) == 0) {
        return 0;
    }
    return mount.strRoot == "/" ? 1 : 2;
}

template <typename Predicate>
static const STMount* FindBest(const std::vector<STMount>& listMount, Predicate fnMatches)
{
    const STMount* pBest = nullptr;
    for (const STMount& mount : listMount) {
        if (fnMatches(mount) && (pBest == nullptr || Rank(mount) < Rank(*pBest))) {
            pBest = &mount;
        }
    }
    return pBest;
}

CMountList::CMountList(const std::string& strText)
{
    std::istringstream stream(strText);
    std::string strLine;
    while (std::getline(stream, strLine)) {
        const std::vector<std::string> listField = Fields(strLine);
        // Six fixed fields, any number of optional ones, "-", type, source, options.
        const auto dash = std::find(listField.begin(), listField.end(), "-");
        if (dash - listField.begin() < 6 || listField.end() - dash < 4) {
            continue;
        }
        STMount mount;
        mount.strNumber = listField[2];
        mount.strRoot = Decode(listField[3]);
        mount.strPoint = Decode(listField[4]);
        mount.strType = Decode(dash[1]);
        mount.strSource = Decode(dash[2]);
        mount.bReadOnly = HasOption(listField[5], "ro") || HasOption(dash[3], "ro");
        m_listMount.push_back(mount);
    }
}

CMountList CMountList::OfProcess()
{
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    return CMountList(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
}

const STMount* CMountList::FindSource(const std::vector<std::string>& listSource) const
{
    return FindBest(m_listMount, [&listSource](const STMount& mount) {
        return std::find(listSource.begin(), listSource.end(), mount.strSource) != listSource.end();
    });
}

const STMount* CMountList::FindNumber(const std::string& strNumber) const
{
    return FindBest(m_listMount, [&strNumber](const STMount& mount) { return mount.strNumber == strNumber; });
}

const std::vector<STMount>& CMountList::Mounts() const { return m_listMount; }
