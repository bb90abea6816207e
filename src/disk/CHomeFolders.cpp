#include "disk/CHomeFolders.h"

#include "files/CDescriptor.h"
#include "files/CFileName.h"
#include "files/CFolderReader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

static const char SYSTEM_FILE[] = "System/Library/CoreServices/SystemVersion.plist";
// Of a system that installs or rescues another one: nobody has a home there.
static const char INSTALLER_FOLDER[] = "System/Installation/CDIS";
static const char WINDOWS_FOLDER[] = "Windows/System32"; // that system has a folder "Users" as well
static const char USERS_FOLDER[] = "Users";
static const std::array<const char*, 3> NO_HOMES = {"Shared", "Guest", "Deleted Users"};

static bool IsThere(int nFolder, const char* pszPath)
{
    struct stat stEntry;
    return fstatat(nFolder, pszPath, &stEntry, AT_SYMLINK_NOFOLLOW) == 0;
}

// The volume that this system has started from is a link to "/" among the others.
static bool IsRunningSystem(int nFolder)
{
    struct stat stFolder;
    struct stat stRoot;
    return fstat(nFolder, &stFolder) == 0 && stat("/", &stRoot) == 0 && stFolder.st_dev == stRoot.st_dev
        && stFolder.st_ino == stRoot.st_ino;
}

static bool IsHome(const CFolderReader& folder)
{
    const char* pszName = folder.Name();
    const auto fnIsName = [pszName](const char* pszNone) { return strcmp(pszName, pszNone) == 0; };
    return pszName[0] != '.' && std::none_of(NO_HOMES.begin(), NO_HOMES.end(), fnIsName) && !folder.IsLink()
        && folder.IsFolder();
}

static void LookForHomes(int nVolume, STHomeFacts& stFacts)
{
    CFolderReader folder(nVolume, USERS_FOLDER);
    while (folder.Next()) {
        stFacts.bHomes = stFacts.bHomes || IsHome(folder);
    }
    stFacts.bUsers = folder.IsOpen() && (folder.Error() == 0 || stFacts.bHomes);
}

STHomeFacts CHomeFolders::Look(const QString& strPath)
{
    STHomeFacts stFacts;
    const CDescriptor volume(
        open(CFileName::Encode(strPath).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!volume.IsOpen() || IsRunningSystem(volume.Get()) || IsThere(volume.Get(), WINDOWS_FOLDER)) {
        return stFacts;
    }
    stFacts.bSystem = IsThere(volume.Get(), SYSTEM_FILE) && !IsThere(volume.Get(), INSTALLER_FOLDER);
    LookForHomes(volume.Get(), stFacts);
    return stFacts;
}

// The volumes "/dev/disk3s1s1" and "/dev/disk3s5" share the room of "/dev/disk3".
QByteArray CHomeFolders::Container(const QByteArray& baDevice)
{
    static const QByteArray DISK = "/dev/disk";
    if (!baDevice.startsWith(DISK)) {
        return baDevice.startsWith("/dev/") ? baDevice : QByteArray();
    }
    int nEnd = DISK.size();
    while (nEnd < baDevice.size() && isdigit(static_cast<unsigned char>(baDevice.at(nEnd))) != 0) {
        ++nEnd;
    }
    return baDevice.left(nEnd);
}

namespace {

/** How well a volume goes with a start-up volume, as the one with the files of its users. */
enum class ENPair
{
    NONE,
    PERHAPS, ///< nothing speaks against it, and nothing for it
    SAME_DISK,
    SAME_NAME ///< and nothing is known against it
};

}

static ENPair PairOf(const STHomeVolume& stSystem, const STHomeVolume& stHomes)
{
    const QByteArray baSystem = CHomeFolders::Container(stSystem.baDevice);
    const QByteArray baHomes = CHomeFolders::Container(stHomes.baDevice);
    const bool bKnown = !baSystem.isEmpty() && !baHomes.isEmpty();
    if (bKnown && baSystem != baHomes) {
        return ENPair::NONE;
    }
    if (stHomes.strName == stSystem.strName + QLatin1String(" - Data")) {
        return ENPair::SAME_NAME;
    }
    return bKnown ? ENPair::SAME_DISK : ENPair::PERHAPS;
}

/** Takes the volume that goes with the system in exactly that way out of the list; nothing without one. */
static std::optional<STHomeVolume> TakePair(QVector<STHomeVolume>& listHomes, const STHomeVolume& stSystem,
                                            ENPair enPair)
{
    const auto it
        = std::find_if(listHomes.begin(), listHomes.end(), [&stSystem, enPair](const STHomeVolume& stHomes) {
              return PairOf(stSystem, stHomes) == enPair;
          });
    if (it == listHomes.end()) {
        return std::nullopt;
    }
    const STHomeVolume stHomes = *it;
    listHomes.erase(it);
    return stHomes;
}

std::optional<STMissingHomes> CHomeFolders::Missing(const QVector<STHomeVolume>& listVolume)
{
    QVector<STHomeVolume> listSystem;
    QVector<STHomeVolume> listHomes;
    for (const STHomeVolume& stVolume : listVolume) {
        const STHomeFacts stFacts = stVolume.stFacts.value_or(STHomeFacts());
        if (stFacts.bSystem && stFacts.bUsers && !stFacts.bHomes) {
            listSystem.append(stVolume);
        } else if (!stFacts.bSystem && stFacts.bUsers) {
            listHomes.append(stVolume);
        }
    }
    std::optional<STMissingHomes> stElsewhere;
    for (const ENPair enPair : {ENPair::SAME_NAME, ENPair::SAME_DISK, ENPair::PERHAPS}) {
        for (auto it = listSystem.begin(); it != listSystem.end();) {
            const std::optional<STHomeVolume> stHomes = TakePair(listHomes, *it, enPair);
            if (stHomes && stHomes->stFacts->bHomes && !stElsewhere) {
                stElsewhere = {it->strName, stHomes->strName};
            }
            it = stHomes ? listSystem.erase(it) : it + 1;
        }
    }
    return listSystem.isEmpty() ? stElsewhere : STMissingHomes{listSystem.first().strName, QString()};
}
