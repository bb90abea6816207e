<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW" sourcelanguage="en">
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
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>目的位置現在是「%1」</translation>
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
