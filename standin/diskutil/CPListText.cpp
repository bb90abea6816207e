#include "diskutil/CPListText.h"

#include "diskutil/CDiskQuery.h"

#include <cstddef>
#include <cstdint>
#include <utility>

static const char REPLACEMENT[] = "\xEF\xBF\xBD";

/** Length of the UTF-8 sequence that starts with this byte; 0 when none does. */
static std::size_t SequenceLength(unsigned char ch)
{
    if (ch < 0x80) {
        return 1;
    }
    if (ch < 0xC2 || ch > 0xF4) {
        return 0;
    }
    return ch < 0xE0 ? 2 : ch < 0xF0 ? 3 : 4;
}

/** The character at nPos and the length of its bytes; a length of 0 when they are no UTF-8. */
static std::pair<std::uint32_t, std::size_t> CharacterAt(const std::string& strText, std::size_t nPos)
{
    static const std::uint32_t s_least[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto chFirst = static_cast<unsigned char>(strText[nPos]);
    const std::size_t nLength = SequenceLength(chFirst);
    if (nLength == 0 || nPos + nLength > strText.size()) {
        return {0, 0};
    }
    std::uint32_t nCharacter = nLength == 1 ? chFirst : chFirst & (0x7Fu >> nLength);
    for (std::size_t i = 1; i < nLength; ++i) {
        const auto ch = static_cast<unsigned char>(strText[nPos + i]);
        if ((ch & 0xC0) != 0x80) {
            return {0, 0};
        }
        nCharacter = nCharacter << 6 | (ch & 0x3Fu);
    }
    return {nCharacter, nCharacter < s_least[nLength] || nCharacter > 0x10FFFF ? 0 : nLength};
}

static bool IsAllowed(std::uint32_t nCharacter)
{
    if (nCharacter < 0x20) {
        return nCharacter == '\t' || nCharacter == '\n' || nCharacter == '\r';
    }
    const bool bSurrogate = nCharacter >= 0xD800 && nCharacter <= 0xDFFF;
    return !bSurrogate && nCharacter != 0xFFFE && nCharacter != 0xFFFF;
}

/** The reference that stands for a character; empty when it can stand for itself. */
static std::string Reference(std::uint32_t nCharacter)
{
    switch (nCharacter) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
    case '\n':
    case '\r':
        // As they are, a reader may turn them into blanks or other line ends.
        return "&#" + std::to_string(nCharacter) + ";";
    default:
        return "";
    }
}

static std::string Key(const char* pKey) { return std::string("\t<key>") + pKey + "</key>\n"; }

static std::string Text(const char* pKey, const std::string& strValue)
{
    return Key(pKey) + "\t<string>" + CPListText::Escape(strValue) + "</string>\n";
}

static std::string Number(const char* pKey, std::uint64_t nValue)
{
    return Key(pKey) + "\t<integer>" + std::to_string(nValue) + "</integer>\n";
}

static std::string Flag(const char* pKey, bool bValue)
{
    return Key(pKey) + (bValue ? "\t<true/>\n" : "\t<false/>\n");
}

std::string CPListText::OfDisk(const STDiskInfo& info)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>\n"
        + Text("BusProtocol", info.strBus) + Text("DeviceIdentifier", info.strIdentifier)
        + Text("DeviceNode", info.strNode) + Flag("Ejectable", info.bEjectable)
        + Text("FilesystemType", info.strFilesystem) + Flag("Internal", info.bInternal)
        + Text("MountPoint", info.strMountPoint) + Number("TotalSize", info.nTotalSize)
        + Text("VolumeName", info.strVolumeName) + Flag("WritableVolume", info.bWritable)
        + "</dict>\n</plist>\n";
}

std::string CPListText::Escape(const std::string& strText)
{
    std::string strResult;
    for (std::size_t i = 0; i < strText.size();) {
        const auto [nCharacter, nLength] = CharacterAt(strText, i);
        if (nLength == 0 || !IsAllowed(nCharacter)) {
            strResult += REPLACEMENT;
        } else {
            const std::string strReference = Reference(nCharacter);
            strResult += strReference.empty() ? strText.substr(i, nLength) : strReference;
        }
        i += nLength == 0 ? 1 : nLength;
    }
    return strResult;
}
