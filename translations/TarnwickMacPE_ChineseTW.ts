<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwick 意外結束</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>之前拷貝的檔案仍在磁碟上。如果當時正在拷貝，請重新開始並再次拷貝全部內容。</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>重新啟動電腦</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>重新開始</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>有磁碟沒有回應</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>現在可以拔除您的磁碟</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>可能尚未寫入全部內容。指示燈閃爍時請等待，然後在另一台電腦上檢查拷貝的檔案。</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwick 已結束，不會再寫入任何磁碟。</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>在螢幕變暗之前，請勿拔除啟動電腦所用的隨身碟。</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>關機</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>重新啟動</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>電腦將自動重新啟動。剩餘秒數：%1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>已用密碼鎖定</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>無法讀取，可能已損毀</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>沒有回應</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>數個相關聯的磁碟之一</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>需要的記憶體超過這台電腦的容量</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>Tarnwick 無法讀取的格式</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>在這裡無法讀取的內容，換一台電腦或由專業人員處理也許仍可讀取。在此之前請勿格式化或修復。</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>稍後有回應的磁碟會自動出現。</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>要輸入密碼，請重新啟動電腦並再次啟動 Tarnwick。</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>有些內容無法顯示</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>無法從這些磁碟或磁碟分割區拷貝任何內容：</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>繼續</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>已由 Windows 鎖定（BitLocker）</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>已由 macOS 鎖定（FileVault）</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>已由 Linux 鎖定（LUKS）</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>請輸入其密碼或 48 位數的修復金鑰。</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>請輸入其密碼，通常是您登入 Mac 時使用的密碼。</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>請輸入電腦啟動時或連接此磁碟時要求的密碼。</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>解鎖後可將檔案拷貝到此磁碟。</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>磁碟上的內容不會變更。</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>此磁碟需要密碼</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>該密碼無法打開磁碟。第 %1 次嘗試，共 %2 次。</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密碼</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>顯示輸入的內容</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>大寫鎖定已開啟。</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>鍵盤：</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>略過此磁碟</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>解鎖</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>這個 USB 磁碟的用途是？</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>包含 %1</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>從中救援檔案</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>其中的檔案會列出以供拷貝。磁碟上的內容不會變更。</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>將檔案拷貝到此磁碟</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>可將其他磁碟的檔案拷貝到其中，原有內容會保留。</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>正在尋找您的磁碟⋯</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>這可能需要一分鐘。</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>顯示列表</translation>
    </message>
</context>
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>剩餘時間：%1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>正在計算⋯</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>正在將檔案拷貝到「%1」：%2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>檔案拷貝已完成！</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>資料可能尚未完全拷貝。確定要停止拷貝嗎？</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>目的儲存裝置已移除！請檢查並重新連接，然後再試一次。</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>拷貝進度</translation>
    </message>
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>磁碟移除前，所有內容都已寫入磁碟。</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>這次拷貝尚未完成。</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>若已沒有拷貝正在進行，則它已中斷：程式被結束、磁碟被移除或停電。缺少的檔案未列於下方。請重新拷貝全部內容。</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>目前未完整拷貝的項目：</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>缺少、不完整或需要說明的項目：</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>請重新拷貝全部內容，最好拷貝到另一個磁碟。</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>屆時尚未拷貝的內容缺失，且未列於下方。</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>所有內容均完整。以下項目需要說明。</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>請嘗試重新拷貝以下項目。若磁碟已滿或其檔案系統不接受大型檔案，請使用另一個磁碟。在取得全部項目之前，請將這份列表與拷貝一起保留。</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>檔案拷貝報告</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>來源：%1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>目標：%1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>開始：%1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>待拷貝：最多 %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>結束：%1</translation>
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
        <translation>另有 %1 個項目因空間不足未列出。</translation>
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
        <translation>正在停止拷貝…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>正在將最後的資料寫入磁碟…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>磁碟已 %1 秒沒有回應：%2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>無法建立它所在的檔案夾。</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>無法在磁碟上建立它。</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>無法將它寫入磁碟。</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>磁碟未能完整接收它。</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>無法打開它。</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>無法讀取它。</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>它在拷貝過程中變短了。</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>它在拷貝過程中有所更動。</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>它在拷貝過程中被移除了。</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>它的位置已被其他內容取代。</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>它不是檔案，而是管線、Socket 或裝置。</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>這個檔案夾未被打開過，因此其中的內容沒有拷貝。</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>它不在列表中，因此沒有拷貝。</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>它是指向自身所在檔案夾的連結。</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>無法讀取這個檔案夾。</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>它已完整拷貝，但無法保留其日期。</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>磁碟已被移除。</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>拷貝已停止。</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>記憶體不足。</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>磁碟未確認所有內容都已寫入。</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>它是指向另一個磁碟的連結。已拷貝它所指向的內容。</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>磁碟沒有回應。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>磁碟已滿。</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>對此磁碟的檔案系統而言太大。</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>不允許取用。</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>磁碟有寫入保護。</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>磁碟回報錯誤。</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>它已不存在。</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>其名稱或路徑太長。</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>磁碟已不再連接。</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>那裡已有同名的其他內容。</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>此磁碟的檔案系統不允許使用它的名稱。</translation>
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
        <translation>1 位元組</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 位元組</translation>
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
        <translation>1 個檔案</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 個檔案</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>%1 個項目中有 1 個未完整拷貝。</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%2 個項目中有 %1 個未完整拷貝。</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>拷貝已停止。磁碟上有 %1（%2）。</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>磁碟未確認所有內容都已寫入。請勿仰賴這份拷貝。</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>沒有拷貝任何內容。</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>磁碟上有 %1（%2）。現在可以拔除磁碟。</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>無法將列表儲存到磁碟上。</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>它的某些部分無法讀取；位元組 %1 以零代替。</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>此處裝載了另一個磁碟。其中的內容沒有拷貝。</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>它與此次拷貝中的另一個檔案夾相同，或者就是拷貝本身。</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>它是指向「%1」的連結，而此磁碟無法儲存連結。</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>磁碟不允許使用它的名稱。它在那裡名為「%1」。</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其權限的項目：%1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其延伸屬性的項目：%1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其日期的檔案夾：%1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>無法讀取它的資源分支，那是它的一部分。</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>它的內容在資源分支中，而此磁碟無法保留資源分支。</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其資源分支的項目：%1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其 Finder 標籤和圖像的項目：%1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其取用控制列表的項目：%1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>此磁碟無法保留其製作日期的項目：%1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>拷貝未鎖定的已鎖定項目：%1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>其內容僅在 iCloud 中，不在這台 Mac 上。</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>目的位置現在是「%1」</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>「%1」無法儲存 %2 或更大的檔案。</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>不允許讀取此檔案夾，其中的內容都不會被拷貝。</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>無法讀取此檔案夾：%1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>只能讀取此檔案夾的一部分：%1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>此連結指回包含它自身的檔案夾。</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>磁碟沒有回應。一旦回應，此檔案夾的內容就會顯示。</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>磁碟回報錯誤。</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>它已不存在。</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>其內容僅在 iCloud 中，不在這台 Mac 上。</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
    <message>
        <source>Close</source>
        <translation>關閉</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>縮到最小</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>縮放</translation>
    </message>
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>此次拷貝中需要您留意的項目</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>還有 %1 個項目，請參閱 %2</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>還有 %1 個項目</translation>
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
        <translation>顯示列表</translation>
    </message>
</context>
<context>
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>記錄檔儲存在 %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>無法寫入記錄檔。</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>「%1」沒有回應。</translation>
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
        <translation>正在搜尋</translation>
    </message>
    <message>
        <source>image</source>
        <translation>影像</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>正在搜尋，請稍候⋯</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>來源</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>選擇要拷貝的檔案：</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>目的位置</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>選擇目的磁碟：</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>拷貝</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>找不到可供拷貝檔案的磁碟。</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>找不到 USB 磁碟。
連接後會顯示在這裡。</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt; 可用，共 &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt;</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>此磁碟機可能已損壞，Tarnwick 無法寫入。請更換其他磁碟機，然後再試一次。</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>正在計算檔案大小⋯</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>空間不足。請選擇其他硬碟或 USB 隨身碟。</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> 時間 </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>重新整理磁碟列表</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>已選擇檔案</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>未選擇檔案</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>需要 %1，可用 %2。</translation>
    </message>
    <message>
        <source>Complete rescue</source>
        <translation>完整搶救</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>拷貝所勾選項目中的全部內容，無論列表是否顯示。</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>「%1」現在可以使用：請按一下圓形箭頭來列出它。</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>使用者的檔案在「%1」，不在「%2」。</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>「%1」的使用者檔案可能已鎖定：請在「磁碟工具程式」中解鎖，然後按一下圓形箭頭。</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>%1 的使用者檔案可能已鎖定：請用密碼解鎖，然後重新啟動 Tarnwick。</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>正在搜尋磁碟⋯</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>正在等待「%1」⋯</translation>
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
        <translation>標誌</translation>
    </message>
    <message>
        <source>title</source>
        <translation>標題</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>結束程式後，電腦將重新開機。確定要結束嗎？</translation>
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
        <translation>關閉</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>縮到最小</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>縮放</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>勾選整個卷宗時，只會拷貝已打開過的檔案夾。</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>「%1」中因名稱而略過的項目：%2</translation>
    </message>
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>不在列表中的項目不會拷貝。</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>表單</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>文字標籤</translation>
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
        <translation>關閉</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>縮到最小</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>縮放</translation>
    </message>
</context>
</TS>
