<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick stopped unexpectedly</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>Restart the computer</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>Start again</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>A disk did not answer</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>You can unplug your disks now</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick has ended, and nothing is written to a disk any more.</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>Leave the stick that you started from in its place until the screen goes dark.</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>Power off</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Restart</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>The computer restarts by itself. Seconds left: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>Locked with a password</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>Cannot be read, perhaps damaged</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>Does not answer</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>One of several disks that belong together</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>Needs more memory than this computer has</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>Of a kind that Tarnwick cannot read</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>A disk that answers later appears by itself.</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>To type a password, restart the computer and start Tarnwick again.</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>Not everything can be shown</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>Nothing can be copied from these disks or parts of disks:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Locked by Windows (BitLocker)</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>Locked by macOS (FileVault)</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Locked by Linux (LUKS)</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>Type its password or its recovery key of 48 digits.</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>Type its password: mostly the one with which you log in to your Mac.</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>Type the password that your computer asks for when it starts, or when you plug this disk in.</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>Then files can be copied to the disk.</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>Nothing on the disk is changed.</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>This disk needs its password</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>That password did not open the disk. Try %1 of %2.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>Show what I type</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Caps Lock is on.</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>Keyboard:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>Skip this disk</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Unlock</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>What is this USB disk for?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>Holds %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>Rescue files from it</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>Its files are listed to be copied. Nothing on it is changed.</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>Copy files to it</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>Files of other disks can be copied to it, beside what it holds.</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>Looking for your disks…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>This can take a minute.</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>Show the list</translation>
    </message>
</context>
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>Remaining Time: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>Calculating...</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>Copying files to (%1): %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>Copy file completed!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>Your data might not be copied completely, are you sure to stop the copying process?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>The destination storage device has been removed! Please check and connect the storage device then try again.</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>Copy Progress</translation>
    </message>
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>Everything was on the disk before it was removed.</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>This copy has not come to its end.</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>Not copied whole so far:</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>Items that are missing, not whole or worth a note:</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>Copy everything again, best onto another disk.</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>What had not been copied by then is missing and is not named below.</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>Everything is whole. The items below are worth a note.</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>Report on a copy of files</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>From: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>To: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>Begun: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>To be copied: at most %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>Ended: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>Whole: %1, %2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Not whole: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>And %1 more, for which there was no room.</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>%1 so far</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1 MB/s</translation>
    </message>
    <message>
        <source>The copy is being stopped…</source>
        <translation>The copy is being stopped…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>The last bytes are being written to the disk…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>The disk has not answered for %1 seconds: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>Its folder cannot be created.</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>It cannot be created on the disk.</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>It cannot be written to the disk.</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>The disk did not take all of it.</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>It cannot be opened.</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>It cannot be read.</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>It became shorter while it was copied.</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>It changed while it was copied.</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>It was removed while it was copied.</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>Something else has taken its place.</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>It is not a file, but a pipe, a socket or a device.</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>The folder was not opened, so its contents were not copied.</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>It was not in the list, so it was not copied.</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>It is a link to a folder that it lies in.</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>The folder cannot be read.</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>It was copied whole, but its date could not be kept.</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>The disk was removed.</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>The copy was stopped.</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>There was not enough memory.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>The disk did not confirm that everything is on it.</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>It is a link to another disk. What it leads to was copied.</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>The disk does not answer.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>The disk is full.</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>Too large for the file system of this disk.</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>Access is not permitted.</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>The disk is write-protected.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>The disk reports an error.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>It is not there any more.</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>Its name or path is too long.</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>The disk is not connected any more.</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>Something else of that name is in its place.</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>The file system of this disk does not allow its name.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 byte</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 bytes</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1 TB</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 file</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 files</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>1 of %1 items was not copied whole.</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%1 of %2 items were not copied whole.</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>The copy was stopped. %1, %2 are on the disk.</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>The disk did not confirm that everything is on it. Do not rely on this copy.</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>Nothing was copied.</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>%1, %2 are on the disk. It can be unplugged now.</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>The list could not be saved on the disk.</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>Parts of it cannot be read; zeros stand for the bytes %1.</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>Another disk is mounted here. What is on it was not copied.</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>It is the same folder as another one in this copy, or the copy itself.</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>It is a link to %1, and this disk cannot hold links.</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>The disk does not take its name. There it is called %1.</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>Items whose permissions this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>Items whose extended attributes this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>Folders whose dates this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>Its resource fork, a part of it, cannot be read.</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>Its contents are in its resource fork, and this disk cannot hold that.</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>Items whose resource forks this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>Items whose Finder tags and icons this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>Items whose access lists this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>Items whose creation dates this disk cannot hold: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>Locked items whose copies are not locked: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Its contents are only in iCloud, not on this Mac.</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>The destination is now %1</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>%1 cannot hold a file of %2 or more.</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>This folder may not be read, nothing of it is copied.</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>This folder cannot be read: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>Only a part of this folder can be read: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>This link leads back to a folder that it lies in.</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>The disk does not answer. What is in this folder appears as soon as it does.</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>The disk reports an error.</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>It is not there any more.</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>Its contents are only in iCloud, not on this Mac.</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>Items of this copy that need your attention</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>and %1 more, see %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>and %1 more</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>This list is also in %1</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>Show the list</translation>
    </message>
</context>
<context>
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>The log is kept in %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>The log cannot be written.</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>%1 does not answer.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>A name and what is said of it.</extracomment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>CSearchWaitView</name>
    <message>
        <source>NotFoundOrNoItemView</source>
        <translation>NotFoundOrNoItemView</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Searching</translation>
    </message>
    <message>
        <source>image</source>
        <translation>image</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>Searching, please wait...</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>Select File to Copy:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>Destination</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>Select Destination Disk:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>No disk to copy files from was found.</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>No USB disk was found.
Connect one, and it appears here.</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>Calculating files size...</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>No enough space, please select other Hard Disk or USB flash drive.</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> at </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>Refresh List of Disks</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>Files selected</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>No files selected</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>%1 are needed, %2 are free.</translation>
    </message>
    <message>
        <source>Complete rescue</source>
        <translation>Complete rescue</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>Copies everything in what is ticked, whether the list shows it or not.</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>%1 is there now: press the round arrow to list it.</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>The users&apos; files are on %1, not on %2.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>Searching for disks…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>Waiting for %1…</translation>
    </message>
</context>
<context>
    <name>CTarnwickMacPE</name>
    <message>
        <source>CTarnwickMacPE</source>
        <translation>CTarnwickMacPE</translation>
    </message>
    <message>
        <source>logo</source>
        <translation>logo</translation>
    </message>
    <message>
        <source>title</source>
        <translation>title</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>Your computer will restart if you exit the program. Are you sure you want to exit?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>Only opened folders of a fully ticked volume are copied.</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>Entries left out of %1 because of their names: %2</translation>
    </message>
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>Entries that are not in the list are not copied.</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
</context>
</TS>
