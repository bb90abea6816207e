<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick 意外退出</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>之前拷贝的文件仍在磁盘上。如果当时正在拷贝，请重新开始并再次拷贝全部内容。</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>重新启动电脑</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>重新开始</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>有磁盘没有响应</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>现在可以拔下您的磁盘</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>可能尚未写入全部内容。指示灯闪烁时请等待，然后在另一台电脑上检查拷贝的文件。</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick 已结束，不会再向任何磁盘写入数据。</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>在屏幕变黑之前，请不要拔下启动电脑所用的 U 盘。</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>关机</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>重新启动</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>电脑将自动重新启动。剩余秒数：%1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>已用密码锁定</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>无法读取，可能已损坏</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>没有响应</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>几个相关联的磁盘之一</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>需要的内存超过这台电脑的容量</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>Tarnwick 无法读取的格式</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>在这里无法读取的内容，换一台电脑或由专业人员处理也许仍可读取。在此之前请勿格式化或修复。</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>稍后有响应的磁盘会自动出现。</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>要输入密码，请重新启动电脑并再次启动 Tarnwick。</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>有些内容无法显示</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>无法从这些磁盘或磁盘分区拷贝任何内容：</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>已由 Windows 锁定（BitLocker）</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>已由 macOS 锁定（FileVault）</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>已由 Linux 锁定（LUKS）</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>请输入其密码或 48 位恢复密钥。</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>请输入其密码，通常是您登录 Mac 时使用的密码。</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>请输入电脑启动时或连接此磁盘时要求的密码。</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>解锁后可将文件拷贝到此磁盘。</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>磁盘上的内容不会被更改。</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>此磁盘需要密码</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>该密码无法打开磁盘。第 %1 次尝试，共 %2 次。</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>显示输入的内容</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>大写锁定已打开。</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>键盘：</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>跳过此磁盘</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>解锁</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>这个 USB 磁盘作何用途？</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>包含 %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>从中抢救文件</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>其中的文件会列出以供拷贝。磁盘上的内容不会被更改。</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>将文件拷贝到此磁盘</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>可将其他磁盘的文件拷贝到其中，原有内容保留。</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>正在查找您的磁盘…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>这可能需要一分钟。</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>显示列表</translation>
    </message>
</context>
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>剩余时间：%1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>正在计算…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>正在将文件拷贝到“%1”：%2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>文件拷贝已完成！</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>数据可能尚未完全拷贝。确定要停止拷贝吗？</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>目的存储设备已被移除！请检查并重新连接，然后再试一次。</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>拷贝进度</translation>
    </message>
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>磁盘移除前，所有内容都已写入磁盘。</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>此次拷贝尚未完成。</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>如果已没有拷贝正在进行，则它已中断：程序被终止、磁盘被移除或断电。缺少的文件未在下方列出。请重新拷贝全部内容。</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>目前未完整拷贝的项目：</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>缺少、不完整或需要说明的项目：</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>请重新拷贝全部内容，最好拷贝到另一个磁盘。</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>届时尚未拷贝的内容缺失，且未在下方列出。</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>所有内容均完整。以下项目需要说明。</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>请尝试重新拷贝以下项目。如果磁盘已满或其文件系统不接受大文件，请使用另一个磁盘。在取得全部项目之前，请将此列表与拷贝一起保留。</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>文件拷贝报告</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>来源：%1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>目标：%1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>开始：%1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>待拷贝：最多 %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>结束：%1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>完整：%1，%2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>不完整：%1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>另有 %1 项因空间不足未列出。</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>目前 %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1 MB/秒</translation>
    </message>
    <message>
        <source>The copy is being stopped…</source>
        <translation>正在停止拷贝…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>正在将最后的数据写入磁盘…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>磁盘已 %1 秒没有响应：%2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>无法创建它所在的文件夹。</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>无法在磁盘上创建它。</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>无法将它写入磁盘。</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>磁盘未能完整接收它。</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>无法打开它。</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>无法读取它。</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>它在拷贝过程中变短了。</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>它在拷贝过程中发生了更改。</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>它在拷贝过程中被移除了。</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>它的位置已被其他内容取代。</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>它不是文件，而是管道、套接字或设备。</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>该文件夹未被打开过，因此其中的内容没有拷贝。</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>它不在列表中，因此没有拷贝。</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>它是指向自身所在文件夹的链接。</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>无法读取该文件夹。</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>它已完整拷贝，但无法保留其日期。</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>磁盘已被移除。</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>拷贝已停止。</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>内存不足。</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>磁盘未确认所有内容都已写入。</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>它是指向另一磁盘的链接。已拷贝它所指向的内容。</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>磁盘没有响应。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>磁盘已满。</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>对此磁盘的文件系统而言太大。</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>不允许访问。</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>磁盘受写保护。</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>磁盘报告错误。</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>它已不存在。</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>其名称或路径太长。</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>磁盘已不再连接。</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>那里已有同名的其他内容。</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>此磁盘的文件系统不允许使用它的名称。</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1%2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1（共 %2）</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 字节</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 字节</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1&#xa0;KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1&#xa0;MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1&#xa0;GB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1&#xa0;TB</translation>
    </message>
    <message>
        <source>1 file</source>
        <translation>1 个文件</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 个文件</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>%1 项中有 1 项未完整拷贝。</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%2 项中有 %1 项未完整拷贝。</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>拷贝已停止。磁盘上有 %1（%2）。</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>磁盘未确认所有内容都已写入。请不要依赖此拷贝。</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>没有拷贝任何内容。</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>磁盘上有 %1（%2）。现在可以拔下磁盘。</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>无法将列表存储到磁盘上。</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>它的某些部分无法读取；字节 %1 以零代替。</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>此处装载了另一个磁盘。其中的内容没有拷贝。</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>它与此次拷贝中的另一个文件夹相同，或者就是拷贝本身。</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>它是指向“%1”的链接，而此磁盘无法储存链接。</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>磁盘不允许使用它的名称。它在那里名为“%1”。</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其权限的项目：%1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其扩展属性的项目：%1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其日期的文件夹：%1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>无法读取它的资源分支，那是它的一部分。</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>它的内容在资源分支中，而此磁盘无法保留资源分支。</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其资源分支的项目：%1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其“访达”标签和图标的项目：%1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其访问控制列表的项目：%1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>此磁盘无法保留其创建日期的项目：%1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>拷贝未锁定的已锁定项目：%1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>其内容仅在 iCloud 中，不在这台 Mac 上。</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>目的位置现在是“%1”</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>“%1”无法储存 %2 或更大的文件。</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>不允许读取此文件夹，其中的内容都不会被拷贝。</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>无法读取此文件夹：%1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>只能读取此文件夹的一部分：%1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>此链接指回包含它自身的文件夹。</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>磁盘没有响应。一旦响应，此文件夹的内容就会显示。</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>磁盘报告错误。</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>它已不存在。</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>其内容仅在 iCloud 中，不在这台 Mac 上。</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>缩放</translation>
    </message>
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>此次拷贝中需要您留意的项目</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>还有 %1 项，请参阅 %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>还有 %1 项</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>此列表也在 %1 中</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>显示列表</translation>
    </message>
</context>
<context>
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>日志保存在 %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>无法写入日志。</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>“%1”没有响应。</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>A name and what is said of it.</extracomment>
        <translation>%1：%2</translation>
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
        <translation>正在搜索</translation>
    </message>
    <message>
        <source>image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>正在搜索，请稍候…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>来源</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>选择要拷贝的文件：</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>目的位置</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>选择目的磁盘：</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>拷贝</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>未找到可从中拷贝文件的磁盘。</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>未找到 USB 磁盘。
连接后会显示在此处。</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; 可用，共 &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt;</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>此驱动器可能已损坏，Tarnwick 无法写入。请更换其他驱动器，然后再试一次。</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>正在计算文件大小…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>空间不足。请选择其他硬盘或 USB 闪存驱动器。</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> 时间 </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>刷新磁盘列表</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>已选择文件</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>未选择文件</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>需要 %1，可用 %2。</translation>
    </message>
    <message>
        <source>Complete rescue</source>
        <translation>完整抢救</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>拷贝所勾选项目中的全部内容，无论列表是否显示。</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1”现已可用：请点按圆形箭头以列出它。</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>用户的文件在“%1”上，不在“%2”上。</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1”的用户文件可能已锁定：请在“磁盘工具”中解锁，然后点按圆形箭头。</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>%1 的用户文件可能已锁定：请用密码解锁，然后重新启动 Tarnwick。</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>正在搜索磁盘…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>正在等待“%1”…</translation>
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
        <translation>标志</translation>
    </message>
    <message>
        <source>title</source>
        <translation>标题</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>退出程序后，电脑将重新启动。确定要退出吗？</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>缩放</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>勾选整个宗卷时，只会拷贝已打开过的文件夹。</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>“%1”中因名称而略过的项目：%2</translation>
    </message>
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>不在列表中的项目不会拷贝。</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>表单</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>文本标签</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>缩放</translation>
    </message>
</context>
</TS>
