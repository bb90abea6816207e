#include "copy/CCopyControl.h"
#include "copy/CLastMetadata.h"

#include <optional>
#include <sys/acl.h>
#include <sys/attr.h>
#include <unistd.h>

// As far as the coarsest dates that file systems keep lie apart, in seconds.
static const qint64 DATE_STEP_SEC = 2;

namespace {

// What getattrlist answers is packed to four bytes.
#pragma pack(push, 4)
struct STCreationDate
{
    quint32 nBytes = 0;
    struct timespec stDate = {};
};
#pragma pack(pop)

} // namespace

static int GetAttributes(const STLastEntry& stEntry, struct attrlist& stWanted, STCreationDate& stAnswer)
{
    return stEntry.nDescriptor != -1
        ? fgetattrlist(stEntry.nDescriptor, &stWanted, &stAnswer, sizeof(stAnswer), 0)
        : getattrlist(stEntry.baPath.constData(), &stWanted, &stAnswer, sizeof(stAnswer), 0);
}

static int SetAttributes(const STLastEntry& stEntry, struct attrlist& stWanted, struct timespec& stDate)
{
    return stEntry.nDescriptor != -1
        ? fsetattrlist(stEntry.nDescriptor, &stWanted, &stDate, sizeof(stDate), 0)
        : setattrlist(stEntry.baPath.constData(), &stWanted, &stDate, sizeof(stDate), 0);
}

static std::optional<struct timespec> CreationDate(const STLastEntry& stEntry)
{
    struct attrlist stWanted = {};
    stWanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    stWanted.commonattr = ATTR_CMN_CRTIME;
    STCreationDate stAnswer;
    if (GetAttributes(stEntry, stWanted, stAnswer) != 0 || stAnswer.nBytes < sizeof(stAnswer)) {
        return std::nullopt;
    }
    return stAnswer.stDate;
}

bool CLastMetadata::GiveCreationDate(CCopyControl& control, const STLastEntry& stSource,
                                     const STLastEntry& stTarget)
{
    control.StepBegins(ENCopyStep::READING);
    std::optional<struct timespec> stDate = CreationDate(stSource);
    if (!stDate || stDate->tv_sec <= 0) {
        return true; // its disk has none
    }
    control.StepBegins(ENCopyStep::WRITING);
    struct attrlist stWanted = {};
    stWanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    stWanted.commonattr = ATTR_CMN_CRTIME;
    if (SetAttributes(stTarget, stWanted, *stDate) != 0) {
        return false;
    }
    const std::optional<struct timespec> stKept = CreationDate(stTarget);
    return stKept && qAbs(qint64(stKept->tv_sec) - qint64(stDate->tv_sec)) <= DATE_STEP_SEC;
}

/** Takes out what would keep the owner of the copy from renaming it and throwing it away. */
static void LetThrowAway(acl_t pList)
{
    acl_entry_t pEntry = nullptr;
    for (int nWhich = ACL_FIRST_ENTRY; acl_get_entry(pList, nWhich, &pEntry) == 0; nWhich = ACL_NEXT_ENTRY) {
        acl_tag_t enTag = ACL_UNDEFINED_TAG;
        acl_permset_mask_t nRights = 0;
        if (acl_get_tag_type(pEntry, &enTag) != 0 || enTag != ACL_EXTENDED_DENY
            || acl_get_permset_mask_np(pEntry, &nRights) != 0) {
            continue;
        }
        nRights &= ~acl_permset_mask_t(ACL_DELETE | ACL_DELETE_CHILD);
        // The next one is found also when this one is gone.
        nRights == 0 ? acl_delete_entry(pList, pEntry) : acl_set_permset_mask_np(pEntry, nRights);
    }
}

bool CLastMetadata::GiveAccessList(CCopyControl& control, const STLastEntry& stSource,
                                   const STLastEntry& stTarget, bool bHolds)
{
    control.StepBegins(ENCopyStep::READING);
    const acl_t pList = stSource.nDescriptor != -1
        ? acl_get_fd_np(stSource.nDescriptor, ACL_TYPE_EXTENDED)
        : acl_get_file(stSource.baPath.constData(), ACL_TYPE_EXTENDED);
    if (pList == nullptr) {
        return true;
    }
    control.StepBegins(ENCopyStep::WRITING);
    LetThrowAway(pList);
    acl_entry_t pEntry = nullptr;
    const auto fnSet = [&] {
        return stTarget.nDescriptor != -1
            ? acl_set_fd_np(stTarget.nDescriptor, pList, ACL_TYPE_EXTENDED)
            : acl_set_file(stTarget.baPath.constData(), ACL_TYPE_EXTENDED, pList);
    };
    const bool bGiven = acl_get_entry(pList, ACL_FIRST_ENTRY, &pEntry) != 0 || (bHolds && fnSet() == 0);
    acl_free(pList);
    return bGiven;
}
