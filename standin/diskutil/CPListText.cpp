#include "diskutil/CPListText.h"

#include "diskutil/CDiskQuery.h"
#include "files/CUtf8.h"

#include <cstddef>
#include <cstdint>

static const char REPLACEMENT[] = "\xEF\xBF\xBD";

static bool IsAllowed(std::uint32_t nCharacter)
{
    if (nCharacter < 0x20) {
        return nCharacter == '\t' || nCharacter == '\n' || nCharacter == '\r';
    }
    return nCharacter != 0xFFFE && nCharacter != 0xFFFF;
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
        const STUtf8Character stChar = CUtf8::First(&strText[i], strText.size() - i);
        if (stChar.nLength == 0 || !IsAllowed(stChar.nCode)) {
            strResult += REPLACEMENT;
        } else {
            const std::string strReference = Reference(stChar.nCode);
            strResult += strReference.empty() ? strText.substr(i, std::size_t(stChar.nLength)) : strReference;
        }
        i += stChar.nLength == 0 ? 1 : std::size_t(stChar.nLength);
    }
    return strResult;
}
