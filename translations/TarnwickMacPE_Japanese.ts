<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>CCopyFileWidget</name>
    <message>
        <source>Remaining Time: %1</source>
        <translation>残り時間: %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Calculating...</source>
        <translation>計算中…</translation>
    </message>
    <message>
        <source>Copying files to (%1): %2</source>
        <translation>“%1”にファイルをコピー中: %2</translation>
    </message>
    <message>
        <source>Copy file completed!</source>
        <translation>ファイルのコピーが完了しました。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Your data might not be copied completely, are you sure to stop the copying process?</source>
        <translation>データがまだ完全にコピーされていない可能性があります。コピーを停止してもよろしいですか?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>The destination storage device has been removed! Please check and connect the storage device then try again.</source>
        <translation>コピー先のストレージデバイスが取り外されました。デバイスを確認し、接続し直してから、もう一度やり直してください。</translation>
    </message>
    <message>
        <source>Copy Progress</source>
        <translation>コピーの進行状況</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>コピー先は“%1”になりました</translation>
    </message>
</context>
<context>
    <name>CLastCopyNotice</name>
    <message>
        <source>Show the list</source>
        <translation>リストを表示</translation>
    </message>
</context>
<context>
    <name>CNoticeLine</name>
    <message>
        <source>%1 does not answer.</source>
        <translation>“%1”が応答しません。</translation>
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
        <translation>検索中</translation>
    </message>
    <message>
        <source>image</source>
        <translation>イメージ</translation>
    </message>
    <message>
        <source>Searching, please wait...</source>
        <translation>検索中です。お待ちください…</translation>
    </message>
</context>
<context>
    <name>CSelFileWidget</name>
    <message>
        <source>Source</source>
        <translation>コピー元</translation>
    </message>
    <message>
        <source>Select File to Copy:</source>
        <translation>コピーするファイルを選択:</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>コピー先</translation>
    </message>
    <message>
        <source>Select Destination Disk:</source>
        <translation>コピー先のディスクを選択:</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>No disk to copy files from was found.</source>
        <translation>コピー元のディスクが見つかりませんでした。</translation>
    </message>
    <message>
        <source>No USB disk was found.
Connect one, and it appears here.</source>
        <translation>USBディスクが見つかりません。
接続すると、ここに表示されます。</translation>
    </message>
    <message>
        <source>&lt;span style=&quot;color:#ff7e17;&quot;&gt;%1GB&lt;/span&gt; Available, &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2GB&lt;/span&gt; Total</source>
        <translation>空き &lt;span style=&quot;color:#ff7e17;&quot;&gt;%1&#xa0;GB&lt;/span&gt;、合計 &lt;span style=&quot;color:#ff7e17;&quot;&gt;%2&#xa0;GB&lt;/span&gt;</translation>
    </message>
    <message>
        <source>Your drive may be damaged and Tarnwick can not write to this drive, please change another one and retry.</source>
        <translation>このドライブは破損している可能性があり、Tarnwickから書き込めません。別のドライブに取り替えて、もう一度やり直してください。</translation>
    </message>
    <message>
        <source>Calculating files size...</source>
        <translation>ファイルサイズを計算中…</translation>
    </message>
    <message>
        <source>No enough space, please select other Hard Disk or USB flash drive.</source>
        <translation>空き領域が足りません。別のハードディスクまたはUSBフラッシュドライブを選択してください。</translation>
    </message>
    <message>
        <source>Tarnwick</source>
        <translation>Tarnwick</translation>
    </message>
    <message>
        <source> at </source>
        <translation> 時刻 </translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Refresh List of Disks</source>
        <translation>ディスクのリストを更新</translation>
    </message>
    <message>
        <source>Files selected</source>
        <translation>ファイルが選択されています</translation>
    </message>
    <message>
        <source>No files selected</source>
        <translation>ファイルが選択されていません</translation>
    </message>
    <message>
        <source>%1 are needed, %2 are free.</source>
        <translation>必要な容量: %1、空き容量: %2</translation>
    </message>
</context>
<context>
    <name>CStartSplash</name>
    <message>
        <source>Searching for disks…</source>
        <translation>ディスクを検索中…</translation>
    </message>
    <message>
        <source>Waiting for %1…</source>
        <translation>“%1”を待っています…</translation>
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
        <translation>ロゴ</translation>
    </message>
    <message>
        <source>title</source>
        <translation>タイトル</translation>
    </message>
    <message>
        <source>Kelvane Tarnwick</source>
        <translation>Kelvane Tarnwick</translation>
    </message>
    <message>
        <source>Your computer will restart if you exit the program. Are you sure you want to exit?</source>
        <translation>プログラムを終了すると、コンピュータが再起動します。終了してもよろしいですか?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>しまう</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>拡大／縮小</translation>
    </message>
</context>
<context>
    <name>CTreeNotices</name>
    <message>
        <source>Only opened folders of a fully ticked volume are copied.</source>
        <translation>全体を選択したボリュームでは、開いたフォルダだけがコピーされます。</translation>
    </message>
    <message>
        <source>Entries left out of %1 because of their names: %2</source>
        <translation>名前のために“%1”から除外された項目: %2</translation>
    </message>
</context>
<context>
    <name>KvMessageBox</name>
    <message>
        <source>Form</source>
        <translation>フォーム</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>テキストラベル</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>No</source>
        <translation>いいえ</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>しまう</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>拡大／縮小</translation>
    </message>
</context>
</TS>
