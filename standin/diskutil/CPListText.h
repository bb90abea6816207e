#pragma once

#include <string>

struct STDiskInfo;

/** Writes what is known of a disk as an XML property list. */
class CPListText
{
public:
    /** The whole property list, valid XML in UTF-8 whatever bytes the texts hold. */
    static std::string OfDisk(const STDiskInfo& info);

    /**
     * The text as the content of an element. Bytes that are no UTF-8 and
     * characters that XML does not allow become U+FFFD.
     */
    static std::string Escape(const std::string& strText);
};
