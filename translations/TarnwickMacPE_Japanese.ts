<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>CAskAgainPanel</name>
    <message>
        <source>Tarnwick stopped unexpectedly</source>
        <translation>Tarnwickが予期せず終了しました</translation>
    </message>
    <message>
        <source>Files that were copied before are still on the disk. If a copy was running, start again and copy everything once more.</source>
        <translation>それまでにコピーしたファイルはディスクに残っています。コピーの途中だった場合は、もう一度開始して、すべてをコピーし直してください。</translation>
    </message>
    <message>
        <source>Restart the computer</source>
        <translation>コンピュータを再起動</translation>
    </message>
    <message>
        <source>Start again</source>
        <translation>もう一度開始</translation>
    </message>
</context>
<context>
    <name>CAskEndPanel</name>
    <message>
        <source>A disk did not answer</source>
        <translation>応答しないディスクがあります</translation>
    </message>
    <message>
        <source>You can unplug your disks now</source>
        <translation>ディスクを取り外しても安全です</translation>
    </message>
    <message>
        <source>Not everything may be on it yet. Wait while its light flashes, and check the copied files on another computer.</source>
        <translation>まだすべてが書き込まれていない可能性があります。ランプが点滅している間は待ち、コピーしたファイルを別のコンピュータで確認してください。</translation>
    </message>
    <message>
        <source>Tarnwick has ended, and nothing is written to a disk any more.</source>
        <translation>Tarnwickは終了しました。ディスクへの書き込みはもうありません。</translation>
    </message>
    <message>
        <source>Leave the stick that you started from in its place until the screen goes dark.</source>
        <translation>起動に使ったUSBメモリは、画面が暗くなるまで取り外さないでください。</translation>
    </message>
    <message>
        <source>Power off</source>
        <translation>システム終了</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>再起動</translation>
    </message>
    <message>
        <source>The computer restarts by itself. Seconds left: %1</source>
        <translation>コンピュータは自動的に再起動します。残り秒数: %1</translation>
    </message>
</context>
<context>
    <name>CAskMissingPanel</name>
    <message>
        <source>Locked with a password</source>
        <translation>パスワードでロックされています</translation>
    </message>
    <message>
        <source>Cannot be read, perhaps damaged</source>
        <translation>読み取れません（壊れている可能性があります）</translation>
    </message>
    <message>
        <source>Does not answer</source>
        <translation>応答がありません</translation>
    </message>
    <message>
        <source>One of several disks that belong together</source>
        <translation>組で使われている複数のディスクの1つ</translation>
    </message>
    <message>
        <source>Needs more memory than this computer has</source>
        <translation>このコンピュータのメモリでは足りません</translation>
    </message>
    <message>
        <source>Of a kind that Tarnwick cannot read</source>
        <translation>Tarnwickでは読めない形式です</translation>
    </message>
    <message>
        <source>Another computer or a specialist may still be able to read what cannot be read here. Do not format or repair it before.</source>
        <translation>ここで読めないものも、別のコンピュータや専門業者なら読める可能性があります。その前に初期化や修復をしないでください。</translation>
    </message>
    <message>
        <source>A disk that answers later appears by itself.</source>
        <translation>あとで応答したディスクは自動的に表示されます。</translation>
    </message>
    <message>
        <source>To type a password, restart the computer and start Tarnwick again.</source>
        <translation>パスワードを入力するには、コンピュータを再起動してTarnwickをもう一度起動してください。</translation>
    </message>
    <message>
        <source>Not everything can be shown</source>
        <translation>表示できないものがあります</translation>
    </message>
    <message>
        <source>Nothing can be copied from these disks or parts of disks:</source>
        <translation>次のディスク、またはその一部からは何もコピーできません:</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>続ける</translation>
    </message>
</context>
<context>
    <name>CAskPasswordPanel</name>
    <message>
        <source>Locked by Windows (BitLocker)</source>
        <translation>Windowsでロック（BitLocker）</translation>
    </message>
    <message>
        <source>Locked by macOS (FileVault)</source>
        <translation>macOSでロック（FileVault）</translation>
    </message>
    <message>
        <source>Locked by Linux (LUKS)</source>
        <translation>Linuxでロック（LUKS）</translation>
    </message>
    <message>
        <source>Type its password or its recovery key of 48 digits.</source>
        <translation>パスワードまたは48桁の回復キーを入力してください。</translation>
    </message>
    <message>
        <source>Type its password: mostly the one with which you log in to your Mac.</source>
        <translation>パスワードを入力してください。通常はお使いのMacにログインするときのものです。</translation>
    </message>
    <message>
        <source>Type the password that your computer asks for when it starts, or when you plug this disk in.</source>
        <translation>コンピュータの起動時、またはこのディスクの接続時に入力するパスワードを入力してください。</translation>
    </message>
    <message>
        <source>Then files can be copied to the disk.</source>
        <translation>その後、ディスクにファイルをコピーできます。</translation>
    </message>
    <message>
        <source>Nothing on the disk is changed.</source>
        <translation>ディスクの内容は変更されません。</translation>
    </message>
    <message>
        <source>This disk needs its password</source>
        <translation>このディスクにはパスワードが必要です</translation>
    </message>
    <message>
        <source>That password did not open the disk. Try %1 of %2.</source>
        <translation>そのパスワードではディスクを開けませんでした。%2回のうち%1回目です。</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>パスワード</translation>
    </message>
    <message>
        <source>Show what I type</source>
        <translation>入力した文字を表示</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Caps Lockがオンです。</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <translation>キーボード:</translation>
    </message>
    <message>
        <source>Skip this disk</source>
        <translation>このディスクをスキップ</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>ロックを解除</translation>
    </message>
</context>
<context>
    <name>CAskSourcePanel</name>
    <message>
        <source>What is this USB disk for?</source>
        <translation>このUSBディスクを何に使いますか?</translation>
    </message>
    <message>
        <source>Holds %1</source>
        <translation>%1が入っています</translation>
    </message>
    <message>
        <source>Rescue files from it</source>
        <translation>ここからファイルを救出する</translation>
    </message>
    <message>
        <source>Its files are listed to be copied. Nothing on it is changed.</source>
        <translation>ファイルがコピー元の一覧に表示されます。ディスクの内容は変更されません。</translation>
    </message>
    <message>
        <source>Copy files to it</source>
        <translation>ここにファイルをコピーする</translation>
    </message>
    <message>
        <source>Files of other disks can be copied to it, beside what it holds.</source>
        <translation>ほかのディスクのファイルを、今ある内容に加えてコピーできます。</translation>
    </message>
</context>
<context>
    <name>CAskWaitPanel</name>
    <message>
        <source>Looking for your disks…</source>
        <translation>ディスクを探しています…</translation>
    </message>
    <message>
        <source>This can take a minute.</source>
        <translation>1分ほどかかることがあります。</translation>
    </message>
</context>
<context>
    <name>CCopyEndBox</name>
    <message>
        <source>Show the list</source>
        <translation>リストを表示</translation>
    </message>
</context>
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
    <message>
        <source>Everything was on the disk before it was removed.</source>
        <translation>取り外される前に、すべてディスクに書き込まれていました。</translation>
    </message>
</context>
<context>
    <name>CCopyReportText</name>
    <message>
        <source>This copy has not come to its end.</source>
        <translation>このコピーは最後まで終わっていません。</translation>
    </message>
    <message>
        <source>If no copy is running any more, it broke off: the program was ended, the disk was removed or the power failed. Files are missing that are not named below. Copy everything again.</source>
        <translation>コピーがもう実行中でない場合は、途中で切れています。プログラムが終了したか、ディスクが取り外されたか、停電しました。下に書かれていないファイルも欠けています。すべてをもう一度コピーしてください。</translation>
    </message>
    <message>
        <source>Not copied whole so far:</source>
        <translation>これまでに完全にはコピーされなかった項目：</translation>
    </message>
    <message>
        <source>Items that are missing, not whole or worth a note:</source>
        <translation>欠けている、不完全な、または注意が必要な項目：</translation>
    </message>
    <message>
        <source>Copy everything again, best onto another disk.</source>
        <translation>すべてをもう一度、できれば別のディスクにコピーしてください。</translation>
    </message>
    <message>
        <source>What had not been copied by then is missing and is not named below.</source>
        <translation>その時点でコピーされていなかったものは欠けており、下には書かれていません。</translation>
    </message>
    <message>
        <source>Everything is whole. The items below are worth a note.</source>
        <translation>すべて完全です。下の項目には注意が必要です。</translation>
    </message>
    <message>
        <source>Try to copy the items below again. If the disk is full, or its file system takes no large files, use another disk. Keep this list with the copy until you have them all.</source>
        <translation>下の項目をもう一度コピーしてみてください。ディスクがいっぱいの場合や、ファイルシステムが大きなファイルに対応していない場合は、別のディスクを使ってください。すべて揃うまで、このリストをコピーと一緒に保管してください。</translation>
    </message>
    <message>
        <source>Report on a copy of files</source>
        <translation>ファイルのコピーに関する報告</translation>
    </message>
    <message>
        <source>From: %1</source>
        <translation>コピー元: %1</translation>
    </message>
    <message>
        <source>To: %1</source>
        <translation>コピー先: %1</translation>
    </message>
    <message>
        <source>Begun: %1</source>
        <translation>開始: %1</translation>
    </message>
    <message>
        <source>To be copied: at most %1</source>
        <translation>コピー対象: 最大 %1</translation>
    </message>
    <message>
        <source>Ended: %1</source>
        <translation>終了: %1</translation>
    </message>
    <message>
        <source>Whole: %1, %2</source>
        <translation>完全: %1、%2</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>不完全: %1</translation>
    </message>
    <message>
        <source>And %1 more, for which there was no room.</source>
        <translation>ほかに %1 項目ありますが、空きがなく記載できませんでした。</translation>
    </message>
</context>
<context>
    <name>CCopyStateLine</name>
    <message>
        <source>%1 so far</source>
        <translation>これまでに%1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1 MB/秒</translation>
    </message>
    <message>
        <source>The copy is being stopped…</source>
        <translation>コピーを中止しています…</translation>
    </message>
    <message>
        <source>The last bytes are being written to the disk…</source>
        <translation>最後のデータをディスクに書き込んでいます…</translation>
    </message>
    <message>
        <source>The disk has not answered for %1 seconds: %2</source>
        <translation>ディスクが%1秒間応答していません: %2</translation>
    </message>
</context>
<context>
    <name>CCopyText</name>
    <message>
        <source>Its folder cannot be created.</source>
        <translation>入れるフォルダを作成できません。</translation>
    </message>
    <message>
        <source>It cannot be created on the disk.</source>
        <translation>ディスクに作成できません。</translation>
    </message>
    <message>
        <source>It cannot be written to the disk.</source>
        <translation>ディスクに書き込めません。</translation>
    </message>
    <message>
        <source>The disk did not take all of it.</source>
        <translation>ディスクが全体を受け取れませんでした。</translation>
    </message>
    <message>
        <source>It cannot be opened.</source>
        <translation>開けません。</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>読み込めません。</translation>
    </message>
    <message>
        <source>It became shorter while it was copied.</source>
        <translation>コピー中に短くなりました。</translation>
    </message>
    <message>
        <source>It changed while it was copied.</source>
        <translation>コピー中に変更されました。</translation>
    </message>
    <message>
        <source>It was removed while it was copied.</source>
        <translation>コピー中に削除されました。</translation>
    </message>
    <message>
        <source>Something else has taken its place.</source>
        <translation>別のものに置き換わっています。</translation>
    </message>
    <message>
        <source>It is not a file, but a pipe, a socket or a device.</source>
        <translation>ファイルではなく、パイプ、ソケット、またはデバイスです。</translation>
    </message>
    <message>
        <source>The folder was not opened, so its contents were not copied.</source>
        <translation>フォルダが開かれていなかったため、内容はコピーされていません。</translation>
    </message>
    <message>
        <source>It was not in the list, so it was not copied.</source>
        <translation>リストになかったため、コピーされていません。</translation>
    </message>
    <message>
        <source>It is a link to a folder that it lies in.</source>
        <translation>自分が入っているフォルダへのリンクです。</translation>
    </message>
    <message>
        <source>The folder cannot be read.</source>
        <translation>フォルダを読み込めません。</translation>
    </message>
    <message>
        <source>It was copied whole, but its date could not be kept.</source>
        <translation>全体がコピーされましたが、日付を保持できませんでした。</translation>
    </message>
    <message>
        <source>The disk was removed.</source>
        <translation>ディスクが取り外されました。</translation>
    </message>
    <message>
        <source>The copy was stopped.</source>
        <translation>コピーは中止されました。</translation>
    </message>
    <message>
        <source>There was not enough memory.</source>
        <translation>メモリが足りませんでした。</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it.</source>
        <translation>すべてが書き込まれたことをディスクが確認しませんでした。</translation>
    </message>
    <message>
        <source>It is a link to another disk. What it leads to was copied.</source>
        <translation>別のディスクへのリンクです。リンク先の内容がコピーされました。</translation>
    </message>
    <message>
        <source>The disk does not answer.</source>
        <translation>ディスクが応答しません。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>ディスクがいっぱいです。</translation>
    </message>
    <message>
        <source>Too large for the file system of this disk.</source>
        <translation>このディスクのファイルシステムには大きすぎます。</translation>
    </message>
    <message>
        <source>Access is not permitted.</source>
        <translation>アクセスが許可されていません。</translation>
    </message>
    <message>
        <source>The disk is write-protected.</source>
        <translation>ディスクは書き込み禁止です。</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>ディスクがエラーを返しました。</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>もう存在しません。</translation>
    </message>
    <message>
        <source>Its name or path is too long.</source>
        <translation>名前またはパスが長すぎます。</translation>
    </message>
    <message>
        <source>The disk is not connected any more.</source>
        <translation>ディスクはもう接続されていません。</translation>
    </message>
    <message>
        <source>Something else of that name is in its place.</source>
        <translation>同じ名前の別のものがあります。</translation>
    </message>
    <message>
        <source>The file system of this disk does not allow its name.</source>
        <translation>このディスクのファイルシステムでは使えない名前です。</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <extracomment>Two sentences, one behind the other.</extracomment>
        <translation>%1%2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%2 中 %1</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 バイト</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 バイト</translation>
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
        <translation>1 個のファイル</translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation>%1 個のファイル</translation>
    </message>
    <message>
        <source>1 of %1 items was not copied whole.</source>
        <translation>%1 項目中 1 項目が完全にはコピーされませんでした。</translation>
    </message>
    <message>
        <source>%1 of %2 items were not copied whole.</source>
        <translation>%2 項目中 %1 項目が完全にはコピーされませんでした。</translation>
    </message>
    <message>
        <source>The copy was stopped. %1, %2 are on the disk.</source>
        <translation>コピーは中止されました。ディスクには%1（%2）があります。</translation>
    </message>
    <message>
        <source>The disk did not confirm that everything is on it. Do not rely on this copy.</source>
        <translation>すべてが書き込まれたことをディスクが確認しませんでした。このコピーに頼らないでください。</translation>
    </message>
    <message>
        <source>Nothing was copied.</source>
        <translation>何もコピーされませんでした。</translation>
    </message>
    <message>
        <source>%1, %2 are on the disk. It can be unplugged now.</source>
        <translation>ディスクに%1（%2）があります。取り外しても安全です。</translation>
    </message>
    <message>
        <source>The list could not be saved on the disk.</source>
        <translation>リストをディスクに保存できませんでした。</translation>
    </message>
    <message>
        <source>Parts of it cannot be read; zeros stand for the bytes %1.</source>
        <translation>一部を読み込めません。バイト%1は0で埋められています。</translation>
    </message>
    <message>
        <source>Another disk is mounted here. What is on it was not copied.</source>
        <translation>ここには別のディスクがマウントされています。その内容はコピーされていません。</translation>
    </message>
    <message>
        <source>It is the same folder as another one in this copy, or the copy itself.</source>
        <translation>このコピーに含まれる別のフォルダと同じフォルダか、コピー先そのものです。</translation>
    </message>
    <message>
        <source>It is a link to %1, and this disk cannot hold links.</source>
        <translation>“%1”へのリンクですが、このディスクにはリンクを保存できません。</translation>
    </message>
    <message>
        <source>The disk does not take its name. There it is called %1.</source>
        <translation>このディスクでは使えない名前です。コピー先での名前は“%1”です。</translation>
    </message>
    <message>
        <source>Items whose permissions this disk cannot hold: %1</source>
        <translation>このディスクにアクセス権を保持できない項目: %1</translation>
    </message>
    <message>
        <source>Items whose extended attributes this disk cannot hold: %1</source>
        <translation>このディスクに拡張属性を保持できない項目: %1</translation>
    </message>
    <message>
        <source>Folders whose dates this disk cannot hold: %1</source>
        <translation>このディスクに日付を保持できないフォルダ: %1</translation>
    </message>
    <message>
        <source>Its resource fork, a part of it, cannot be read.</source>
        <translation>この項目の一部であるリソースフォークを読み込めません。</translation>
    </message>
    <message>
        <source>Its contents are in its resource fork, and this disk cannot hold that.</source>
        <translation>内容がリソースフォークにあり、このディスクには保持できません。</translation>
    </message>
    <message>
        <source>Items whose resource forks this disk cannot hold: %1</source>
        <translation>このディスクにリソースフォークを保持できない項目: %1</translation>
    </message>
    <message>
        <source>Items whose Finder tags and icons this disk cannot hold: %1</source>
        <translation>このディスクにFinderのタグやアイコンを保持できない項目: %1</translation>
    </message>
    <message>
        <source>Items whose access lists this disk cannot hold: %1</source>
        <translation>このディスクにアクセス制御リストを保持できない項目: %1</translation>
    </message>
    <message>
        <source>Items whose creation dates this disk cannot hold: %1</source>
        <translation>このディスクに作成日を保持できない項目: %1</translation>
    </message>
    <message>
        <source>Locked items whose copies are not locked: %1</source>
        <translation>コピーがロックされていない、ロックされた項目: %1</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>内容はiCloudにのみあり、このMacにはありません。</translation>
    </message>
</context>
<context>
    <name>CDestinationPanel</name>
    <message>
        <source>The destination is now %1</source>
        <translation>コピー先は“%1”になりました</translation>
    </message>
    <message>
        <source>%1 cannot hold a file of %2 or more.</source>
        <translation>“%1”には%2以上のファイルを保存できません。</translation>
    </message>
</context>
<context>
    <name>CFolderTrouble</name>
    <message>
        <source>This folder may not be read, nothing of it is copied.</source>
        <translation>このフォルダは読み込みが許可されていないため、中の項目はコピーされません。</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>このフォルダを読み込めません: %1</translation>
    </message>
    <message>
        <source>Only a part of this folder can be read: %1</source>
        <translation>このフォルダは一部しか読み込めません: %1</translation>
    </message>
    <message>
        <source>This link leads back to a folder that it lies in.</source>
        <translation>このリンクは、リンク自体が入っているフォルダに戻ります。</translation>
    </message>
    <message>
        <source>The disk does not answer. What is in this folder appears as soon as it does.</source>
        <translation>ディスクが応答しません。応答があると、このフォルダの内容が表示されます。</translation>
    </message>
    <message>
        <source>The disk reports an error.</source>
        <translation>ディスクがエラーを返しました。</translation>
    </message>
    <message>
        <source>It is not there any more.</source>
        <translation>もう存在しません。</translation>
    </message>
    <message>
        <source>Its contents are only in iCloud, not on this Mac.</source>
        <translation>内容はiCloudにのみあり、このMacにはありません。</translation>
    </message>
</context>
<context>
    <name>CItemListDialog</name>
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
    <message>
        <source>Items of this copy that need your attention</source>
        <translation>このコピーで確認が必要な項目</translation>
    </message>
    <message>
        <source>and %1 more, see %2</source>
        <translation>ほか%1項目（%2を参照）</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>ほか%1項目</translation>
    </message>
    <message>
        <source>This list is also in %1</source>
        <translation>このリストは%1にもあります</translation>
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
    <name>CLogNotice</name>
    <message>
        <source>The log is kept in %1</source>
        <extracomment>The path of a folder.</extracomment>
        <translation>ログの保存先: %1</translation>
    </message>
    <message>
        <source>The log cannot be written.</source>
        <translation>ログを書き込めません。</translation>
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
    <message>
        <source>Complete rescue</source>
        <translation>すべてを救出</translation>
    </message>
    <message>
        <source>Copies everything in what is ticked, whether the list shows it or not.</source>
        <translation>選択した項目に含まれるものを、リストに表示されていないものも含めてすべてコピーします。</translation>
    </message>
</context>
<context>
    <name>CSourceNotice</name>
    <message>
        <source>%1 is there now: press the round arrow to list it.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1”が接続されました。丸い矢印をクリックすると表示されます。</translation>
    </message>
    <message>
        <source>The users&apos; files are on %1, not on %2.</source>
        <extracomment>Names of two volumes: where the users&apos; files are, and where the user may be looking for them.</extracomment>
        <translation>ユーザのファイルは“%2”ではなく“%1”にあります。</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them in Disk Utility, then press the round arrow.</source>
        <extracomment>The name of a volume. The round arrow is the button that looks for disks.</extracomment>
        <translation>“%1”のユーザのファイルがロック中なら、ディスクユーティリティで解除し、丸い矢印をクリックしてください。</translation>
    </message>
    <message>
        <source>The users&apos; files of %1 may be locked: unlock them with their password, then start Tarnwick again.</source>
        <extracomment>The name of a volume.</extracomment>
        <translation>%1のファイルはロック中の可能性があります。パスワードで解除し、Tarnwickをもう一度起動してください。</translation>
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
    <message>
        <source>Entries that are not in the list are not copied.</source>
        <translation>リストにない項目はコピーされません。</translation>
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
