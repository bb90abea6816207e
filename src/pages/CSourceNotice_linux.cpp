#include "pages/CSourceNotice.h"

// The boot medium asks for passwords before it starts the program, a desktop whenever a disk is
// opened there; so this is true of both.
QString CSourceNotice::LockedText()
{
    //: The name of a volume.
    return tr("The users' files of %1 may be locked: unlock them with their password, then start Tarnwick "
              "again.");
}
