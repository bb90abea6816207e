#include "pages/CSourceNotice.h"

QString CSourceNotice::LockedText()
{
    //: The name of a volume. The round arrow is the button that looks for disks.
    return tr("The users' files of %1 may be locked: unlock them in Disk Utility, then press the "
              "round arrow.");
}
