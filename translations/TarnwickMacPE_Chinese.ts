<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
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
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>目的位置现在是“%1”</translation>
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
