<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>AppPortGroup</name>
    <message>
        <source>Port %1</source>
        <translation>ポート%1</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsContent</name>
    <message>
        <source>Turn On</source>
        <translation>オンにする</translation>
    </message>
    <message>
        <source>Re-check</source>
        <translation>再確認</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>完了</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsWindow</name>
    <message>
        <source>Login Items</source>
        <translation>ログイン項目</translation>
    </message>
</context>
<context>
    <name>CheckPortIntent</name>
    <message>
        <source>Check Port</source>
        <translation>ポートを確認</translation>
    </message>
    <message>
        <source>Port Number</source>
        <translation>ポート番号</translation>
    </message>
    <message>
        <source>A port number between 1 and 65535</source>
        <translation>1から65535までのポート番号</translation>
    </message>
    <message>
        <source>Which port would you like to check?</source>
        <translation>どのポートを確認しますか？</translation>
    </message>
    <message>
        <source>Please enter a valid port number between 1 and 65535.</source>
        <translation>1から65535までの有効なポート番号を入力してください。</translation>
    </message>
    <message>
        <source>Port %1 is free — nothing is using it.</source>
        <translation>ポート%1は空いています。使用しているプロセスはありません。</translation>
    </message>
    <message>
        <source>Port %1 is used by: %2</source>
        <translation>ポート%1を使用中: %2</translation>
    </message>
    <message>
        <source>Check a port in %1</source>
        <translation>%1でポートを確認</translation>
    </message>
    <message>
        <source>What is using a port in %1</source>
        <translation>%1でポートの使用元を調べる</translation>
    </message>
    <message>
        <source>Port lookup in %1</source>
        <translation>%1でポートを検索</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
</context>
<context>
    <name>CollapsibleSection</name>
    <message>
        <source>open</source>
        <translation>開いています</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>閉じています</translation>
    </message>
</context>
<context>
    <name>CommandCard</name>
    <message>
        <source>To allow it, run this in a terminal:</source>
        <translation>許可するには、ターミナルで次を実行します:</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>コピーしました</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>コマンド</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Toggle Inspector</source>
        <translation>インスペクタを表示/非表示</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>インスペクタ</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>メニュー</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stop the server so that it stays stopped</source>
        <translation>サーバーを停止したままにする</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Add to %1</source>
        <translation>%1に追加</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Remove from %1</source>
        <translation>%1から削除</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
</context>
<context>
    <name>ExceptionSection</name>
    <message>
        <source>e.g. 3000</source>
        <translation>例: 3000</translation>
    </message>
    <message>
        <source>Ignored ports</source>
        <translation>無視するポート</translation>
    </message>
    <message>
        <source>e.g. python</source>
        <translation>例: python</translation>
    </message>
    <message>
        <source>Ignored processes</source>
        <translation>無視するプロセス</translation>
    </message>
</context>
<context>
    <name>ForceQuitButton</name>
    <message>
        <source>Force Quit</source>
        <translation>強制終了</translation>
    </message>
    <message>
        <source>Force-quit selected process</source>
        <translation>選択したプロセスを強制終了</translation>
    </message>
</context>
<context>
    <name>ForceQuitDialog</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Force Quit Process?</source>
        <translation>プロセスを強制終了しますか？</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>通知領域に表示</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>タスクバーに表示</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>ログイン時に起動</translation>
    </message>
    <message>
        <source>Keyboard Shortcut</source>
        <translation>キーボードショートカット</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Ctrl+Alt+Shift+P — どこからでもZenlotを開きます</translation>
    </message>
    <message>
        <source>Enable global shortcut</source>
        <translation>グローバルショートカットを有効にする</translation>
    </message>
</context>
<context>
    <name>GlobalShortcut</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Zenlotを開く</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>Zenlotはバックグラウンドでの実行をブロックされています。systemdでモニターがマスクされています。「ログイン項目を開く」で許可する方法を確認し、「再確認」をクリックしてください。</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>Zenlotはまだブロックされています。「ログイン項目を開く」にモニターのマスクを解除するコマンドがあります。</translation>
    </message>
</context>
<context>
    <name>LogLines</name>
    <message>
        <source>Log</source>
        <translation>ログ</translation>
    </message>
    <message>
        <source>Unmark Row</source>
        <translation>行のマークを外す</translation>
    </message>
    <message>
        <source>Mark Row</source>
        <translation>行をマーク</translation>
    </message>
</context>
<context>
    <name>LogTabView</name>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>ログを消去</translation>
    </message>
    <message>
        <source>Unmark</source>
        <translation>マークを外す</translation>
    </message>
    <message>
        <source>Clear marked rows</source>
        <translation>すべての行のマークを外す</translation>
    </message>
    <message>
        <source>No log entries yet</source>
        <translation>ログはまだありません</translation>
    </message>
    <message>
        <source>At %1 MB the log begins anew, and one old log is kept beside it.</source>
        <translation>%1 MBになるとログは新しく始まり、古いログが1つ隣に残ります。</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Background Monitor</source>
        <translation>バックグラウンドモニター</translation>
    </message>
    <message>
        <source>A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn&apos;t running. You&apos;ll be notified the moment a crash blocks your dev server.</source>
        <translation>ポートの競合を24時間監視する軽量なデーモンです。Zenlotを起動していないときも動作し、クラッシュで開発サーバーがブロックされるとすぐに通知します。</translation>
    </message>
    <message>
        <source>Background monitor enabled</source>
        <translation>バックグラウンドモニターは有効です</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>続ける</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>ログイン項目を開く</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>有効にしました — 再確認</translation>
    </message>
    <message>
        <source>Skip for now</source>
        <translation>今はスキップ</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>インストール中…</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>有効にする</translation>
    </message>
</context>
<context>
    <name>ObstacleText</name>
    <message>
        <source>%1 has reserved it without listening.</source>
        <translation>%1 が待ち受けずに確保しています。</translation>
    </message>
    <message>
        <source>%1 uses it for a connection to port %2. Some servers can&apos;t have it until that ends.</source>
        <translation>%1 がポート %2 への接続に使っています。終わるまで使えないサーバーもあります。</translation>
    </message>
    <message>
        <source>Its last connection has just ended. Some servers can&apos;t have it for another %1 s.</source>
        <translation>最後の接続が終わったばかりです。あと %1 秒は使えないサーバーもあります。</translation>
    </message>
    <message>
        <source>The system keeps it for servers that ask for it.</source>
        <translation>システムは、これを指定して求めるサーバーのために取っておきます。</translation>
    </message>
    <message>
        <source>Only privileged programs can have it.</source>
        <translation>特権のあるプログラムだけが使えます。</translation>
    </message>
    <message>
        <source>A process of another user</source>
        <translation>別のユーザーのプロセス</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Zenlotへようこそ</translation>
    </message>
</context>
<context>
    <name>OriginNote</name>
    <message>
        <source>%1 (deleted folder)</source>
        <translation>%1（削除されたフォルダ）</translation>
    </message>
    <message>
        <source>Open to the network</source>
        <translation>ネットワークに公開</translation>
    </message>
    <message>
        <source>Perhaps left behind</source>
        <translation>放置されている可能性あり</translation>
    </message>
</context>
<context>
    <name>OriginRows</name>
    <message>
        <source>%1, of a user</source>
        <translation>%1（ユーザー）</translation>
    </message>
    <message>
        <source>%1, of the system</source>
        <translation>%1（システム）</translation>
    </message>
    <message>
        <source>%1 (IPv6 only)</source>
        <translation>%1（IPv6 のみ）</translation>
    </message>
    <message>
        <source>This machine only</source>
        <translation>このマシンのみ</translation>
    </message>
    <message>
        <source>The network, unless a firewall stops it</source>
        <translation>ネットワーク（ファイアウォールで止められない限り）</translation>
    </message>
    <message>
        <source>Everyone who can reach %1, unless a firewall stops them</source>
        <translation>%1 に到達できるすべての相手（ファイアウォールで止められない限り）</translation>
    </message>
    <message>
        <source>%1 processes: %2</source>
        <translation>%1 個のプロセス：%2</translation>
    </message>
    <message>
        <source>its folder is deleted</source>
        <translation>フォルダが削除された</translation>
    </message>
    <message>
        <source>it has no terminal</source>
        <translation>端末がない</translation>
    </message>
    <message>
        <source>what started it has ended</source>
        <translation>起動元が終了した</translation>
    </message>
    <message>
        <source>its session is over</source>
        <translation>セッションが終了した</translation>
    </message>
    <message>
        <source>nobody is connected</source>
        <translation>接続している相手がいない</translation>
    </message>
    <message>
        <source>Perhaps: %1</source>
        <translation>可能性あり：%1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>コミット</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>ブランチ</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>フォルダ</translation>
    </message>
    <message>
        <source>%1 (deleted)</source>
        <translation>%1（削除済み）</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>実行内容</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>コマンドライン</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>起動元</translation>
    </message>
    <message>
        <source>Container</source>
        <translation>コンテナ</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>イメージ</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>サービス</translation>
    </message>
    <message>
        <source>Its port</source>
        <translation>内部ポート</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>ユニット</translation>
    </message>
    <message>
        <source>Socket</source>
        <translation>ソケット</translation>
    </message>
    <message>
        <source>Listens on</source>
        <translation>待ち受け</translation>
    </message>
    <message>
        <source>Open to</source>
        <translation>公開範囲</translation>
    </message>
    <message>
        <source>Shared by</source>
        <translation>共有</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>クライアント</translation>
    </message>
    <message>
        <source>Left behind</source>
        <translation>放置</translation>
    </message>
</context>
<context>
    <name>PortField</name>
    <message>
        <source>Port</source>
        <translation>ポート</translation>
    </message>
</context>
<context>
    <name>PortMenu</name>
    <message>
        <source>Copy Port</source>
        <translation>ポートをコピー</translation>
    </message>
    <message>
        <source>Copy PID</source>
        <translation>PIDをコピー</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>パスをコピー</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>詳細を表示</translation>
    </message>
    <message>
        <source>Force Quit…</source>
        <translation>強制終了…</translation>
    </message>
</context>
<context>
    <name>PortMonitoringTab</name>
    <message>
        <source>Show a notification whenever any new process starts listening on a port</source>
        <translation>新しいプロセスがポートの待ち受けを開始するたびに通知します</translation>
    </message>
    <message>
        <source>Notify on all port activity</source>
        <translation>すべてのポートアクティビティを通知</translation>
    </message>
    <message>
        <source>Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.</source>
        <translation>開発用ランタイムをバックグラウンドで監視し、ポートの競合を検出すると通知します。ログイン時に自動的に実行されます。</translation>
    </message>
    <message>
        <source>Conflict Monitoring</source>
        <translation>競合の監視</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>ログイン項目を開く</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>有効にしました — 再確認</translation>
    </message>
    <message>
        <source>Port Activity Exceptions</source>
        <translation>ポートアクティビティの例外</translation>
    </message>
    <message>
        <source>Conflict Monitoring Exceptions</source>
        <translation>競合の監視の例外</translation>
    </message>
    <message>
        <source>The system tells of refused ports exactly.</source>
        <translation>拒否されたポートはシステムから正確に通知されます。</translation>
    </message>
    <message>
        <source>For exact alerts an administrator turns on the helper of the system: %1</source>
        <translation>正確に通知するには、管理者がシステムのヘルパーを有効にします：%1</translation>
    </message>
</context>
<context>
    <name>ProcessDetailContent</name>
    <message>
        <source>Identity</source>
        <translation>識別情報</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>リソース</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>アプリケーション</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>プロジェクト</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>由来</translation>
    </message>
</context>
<context>
    <name>ProcessDetailPanel</name>
    <message>
        <source>Inspector</source>
        <translation>インスペクタ</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>読み込み中…</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>General</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Port Monitoring</source>
        <translation>ポートの監視</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>ログ</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Refresh</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>スキャン中…</translation>
    </message>
    <message>
        <source>No listening ports</source>
        <translation>待ち受け中のポートはありません</translation>
    </message>
    <message>
        <source>Listening ports</source>
        <translation>待ち受け中のポート</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message>
        <source>open</source>
        <translation>開いています</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>閉じています</translation>
    </message>
</context>
<context>
    <name>StopDialog</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Stop the Server?</source>
        <translation>サーバーを停止しますか？</translation>
    </message>
</context>
<context>
    <name>StopText</name>
    <message>
        <source>Stops container %1.</source>
        <translation>コンテナ %1 を停止します。</translation>
    </message>
    <message>
        <source>Stops container %1 of compose project %2.</source>
        <translation>Compose プロジェクト %2 のコンテナ %1 を停止します。</translation>
    </message>
    <message>
        <source>%1 is a program that people work in or that the session needs; it is not stopped for a port.</source>
        <translation>%1 は作業中またはセッションに必要なプログラムのため、ポートのためには停止しません。</translation>
    </message>
    <message>
        <source>It belongs to another user, and to no service or container that could be stopped.</source>
        <translation>別のユーザーのもので、停止できるサービスやコンテナに属していません。</translation>
    </message>
    <message>
        <source>Nobody can tell what would have to be stopped.</source>
        <translation>何を停止すべきか判断できません。</translation>
    </message>
    <message>
        <source>Stops %1, one of your services.</source>
        <translation>あなたのサービス %1 を停止します。</translation>
    </message>
    <message>
        <source>Stops %1, a service of the system.</source>
        <translation>システムのサービス %1 を停止します。</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2).</source>
        <translation>%1（PID %2）を停止します。</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2), which started the server on port %3.</source>
        <translation>ポート %3 のサーバーを起動した %1（PID %2）を停止します。</translation>
    </message>
    <message>
        <source>1 client is connected.</source>
        <translation>1 個のクライアントが接続しています。</translation>
    </message>
    <message>
        <source>%1 clients are connected.</source>
        <translation>%1 個のクライアントが接続しています。</translation>
    </message>
    <message>
        <source>Ports that go with it: %1.</source>
        <translation>同時に閉じるポート：%1。</translation>
    </message>
    <message>
        <source>%1 may start it again.</source>
        <translation>%1 が再び起動する可能性があります。</translation>
    </message>
    <message>
        <source>%1 has been asked to end and still holds port %2. End it by force?</source>
        <translation>%1 に終了を要求しましたが、まだポート %2 を使用しています。強制終了しますか？</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>別のプロセス</translation>
    </message>
    <message>
        <source>%1 has ended, and %2 has taken port %3 again.</source>
        <translation>%1 は終了し、%2 が再びポート %3 を使用しています。</translation>
    </message>
    <message>
        <source>%1 could not be stopped: %2</source>
        <translation>%1 を停止できませんでした：%2</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>ソフトウェアアップデート</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>後で</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>リリースノート</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>再試行</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>Zenlotへようこそ</translation>
    </message>
    <message>
        <source>Zenlot watches your network ports so you always know what&apos;s running — and what&apos;s blocking what.</source>
        <translation>Zenlotがネットワークポートを見守り、何が動いていて、何が何をブロックしているのかをいつでも把握できます。</translation>
    </message>
    <message>
        <source>Type any port number to see which process is using it.</source>
        <translation>ポート番号を入力すると、使用しているプロセスがわかります。</translation>
    </message>
    <message>
        <source>Instant port lookup</source>
        <translation>ポートを瞬時に検索</translation>
    </message>
    <message>
        <source>Get notified when a dev server can&apos;t start because a port is taken.</source>
        <translation>ポートが使用中で開発サーバーを起動できないときに通知します。</translation>
    </message>
    <message>
        <source>Conflict notifications</source>
        <translation>競合の通知</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>ターミナルを開かずに、ブロックされたポートを解放します。</translation>
    </message>
    <message>
        <source>One-click force quit</source>
        <translation>ワンクリックで強制終了</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>続ける</translation>
    </message>
</context>
<context>
    <name>zenlot::AppDelegate</name>
    <message>
        <source>Open Zenlot</source>
        <translation>Zenlotを開く</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>設定…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>アップデートを確認…</translation>
    </message>
    <message>
        <source>Quit Zenlot</source>
        <translation>Zenlotを終了</translation>
    </message>
    <message>
        <source>Port number…</source>
        <translation>ポート番号…</translation>
    </message>
    <message>
        <source>Port %1 blocked by %2</source>
        <translation>ポート%1を%2がブロック中</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>競合</translation>
    </message>
    <message>
        <source>Kill %1</source>
        <translation>%1を強制終了</translation>
    </message>
    <message>
        <source>Ignore Port %1</source>
        <translation>ポート%1を無視</translation>
    </message>
    <message>
        <source>Ignore %1</source>
        <translation>%1を無視</translation>
    </message>
    <message>
        <source>Clear Conflict Indicator</source>
        <translation>競合の表示を消す</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>メニュー</translation>
    </message>
</context>
<context>
    <name>zenlot::BackgroundItemsViewModel</name>
    <message>
        <source>Zenlot is blocked from running in the background</source>
        <translation>Zenlotはバックグラウンドでの実行がブロックされています</translation>
    </message>
    <message>
        <source>Zenlot may run in the background</source>
        <translation>Zenlotはバックグラウンドで実行できます</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor is turned off</source>
        <translation>Zenlotのバックグラウンドモニターはオフです</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor was not found</source>
        <translation>Zenlotのバックグラウンドモニターが見つかりません</translation>
    </message>
    <message>
        <source>The background monitor is masked, so systemd refuses to start it. You, an administrator or a clean-up tool may have switched it off.</source>
        <translation>バックグラウンドモニターはマスクされているため、systemdが起動を拒否します。あなた、管理者、またはクリーンアップツールがオフにした可能性があります。</translation>
    </message>
    <message>
        <source>The background monitor starts when you log in. Click Re-check in Zenlot to go on.</source>
        <translation>バックグラウンドモニターはログイン時に起動します。続けるには、Zenlotで「再確認」をクリックしてください。</translation>
    </message>
    <message>
        <source>Nothing blocks it. Turn it on here, then click Re-check in Zenlot.</source>
        <translation>ブロックしているものはありません。ここでオンにしてから、Zenlotで「再確認」をクリックしてください。</translation>
    </message>
    <message>
        <source>systemd knows no such service of yours. Either Zenlot is not completely installed, or your session is not run by systemd.</source>
        <translation>systemdにこのユーザーの該当するサービスがありません。Zenlotのインストールが不完全か、セッションがsystemdで管理されていません。</translation>
    </message>
    <message>
        <source>Still blocked</source>
        <translation>まだブロックされています</translation>
    </message>
    <message>
        <source>Blocked</source>
        <translation>ブロック中</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>許可済み</translation>
    </message>
    <message>
        <source>Still off</source>
        <translation>まだオフです</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>Still not found</source>
        <translation>まだ見つかりません</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>見つかりません</translation>
    </message>
</context>
<context>
    <name>zenlot::ChildAppService</name>
    <message>
        <source>%1 cannot be run</source>
        <translation>%1を実行できません</translation>
    </message>
    <message>
        <source>%1 has ended with a failure again and again</source>
        <translation>%1は何度もエラーで終了しました</translation>
    </message>
</context>
<context>
    <name>zenlot::ContentViewModel</name>
    <message>
        <source>Enter a port number</source>
        <translation>ポート番号を入力</translation>
    </message>
    <message>
        <source>Port %1 is free</source>
        <translation>ポート%1は空いています</translation>
    </message>
    <message>
        <source>%1 process on port %2</source>
        <translation>ポート%2に%1個のプロセス</translation>
    </message>
    <message>
        <source>%1 processes on port %2</source>
        <translation>ポート%2に%1個のプロセス</translation>
    </message>
    <message>
        <source>Force-quit %1 (PID %2)? Any unsaved work will be lost.</source>
        <translation>%1（PID %2）を強制終了しますか？保存していない作業内容は失われます。</translation>
    </message>
    <message>
        <source>Force Quit %1</source>
        <translation>%1を強制終了</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>%1 を停止</translation>
    </message>
    <message>
        <source>End by Force</source>
        <translation>強制終了</translation>
    </message>
</context>
<context>
    <name>zenlot::PortNotificationManager</name>
    <message>
        <source>Kill Process</source>
        <translation>プロセスを終了</translation>
    </message>
    <message>
        <source>Ignore Port</source>
        <translation>ポートを無視</translation>
    </message>
    <message>
        <source>Ignore Process</source>
        <translation>プロセスを無視</translation>
    </message>
    <message>
        <source>Port %1 is already in use</source>
        <translation>ポート%1はすでに使用中です</translation>
    </message>
    <message>
        <source>%1 (PID %2) is blocking port %3 — kill it to free the port.</source>
        <translation>%1（PID %2）がポート%3をブロックしています。終了するとポートが解放されます。</translation>
    </message>
    <message>
        <source>Port %1 is now occupied</source>
        <translation>ポート%1が使用されました</translation>
    </message>
    <message>
        <source>%1 (PID %2) started listening on port %3</source>
        <translation>%1（PID %2）がポート%3で待ち受けを開始しました</translation>
    </message>
    <message>
        <source>%1 is blocking port %2</source>
        <translation>%1がポート%2をブロックしています</translation>
    </message>
    <message>
        <source>%1 started listening on port %2</source>
        <translation>%1がポート%2で待ち受けを開始しました</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… ほか %1 件</translation>
    </message>
    <message>
        <source>More ports are already in use. Zenlot shows them all.</source>
        <translation>ほかのポートも使用中です。Zenlot ですべて確認できます。</translation>
    </message>
    <message>
        <source>More ports are now occupied. Zenlot shows them all.</source>
        <translation>新たに使用中になったポートがほかにもあります。Zenlot ですべて確認できます。</translation>
    </message>
    <message>
        <source>Open Zenlot</source>
        <translation>Zenlotを開く</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessDetailViewModel</name>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>ネットワーク（%1）</translation>
    </message>
    <message>
        <source>Parent</source>
        <translation>親プロセス</translation>
    </message>
    <message>
        <source>PID %1</source>
        <translation>PID %1</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>ポート</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>プロトコル</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状態</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>アドレス</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>経過時間</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>フラグ</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>メモリ</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>常駐</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>仮想</translation>
    </message>
    <message>
        <source>Open FDs</source>
        <translation>オープンFD</translation>
    </message>
    <message>
        <source>Bundle ID</source>
        <translation>バンドルID</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>ビルド</translation>
    </message>
    <message>
        <source>Average CPU</source>
        <translation>平均CPU</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessListModel</name>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>PID %1</source>
        <translation>PID %1</translation>
    </message>
</context>
<context>
    <name>zenlot::SidebarModel</name>
    <message>
        <source>My Processes</source>
        <translation>自分のプロセス</translation>
    </message>
    <message>
        <source>System</source>
        <translation>システム</translation>
    </message>
</context>
<context>
    <name>zenlot::StatusMenu</name>
    <message>
        <source>Port number…</source>
        <translation>ポート番号…</translation>
    </message>
</context>
<context>
    <name>zenlot::SystemdAppService</name>
    <message>
        <source>%1 cannot be enabled</source>
        <translation>%1を有効にできません</translation>
    </message>
    <message>
        <source>systemd did not answer in time</source>
        <translation>systemdが時間内に応答しませんでした</translation>
    </message>
    <message>
        <source>%1 did not start (%2)</source>
        <translation>%1が起動しませんでした（%2）</translation>
    </message>
    <message>
        <source>%1 has ended with a failure (%2)</source>
        <translation>%1はエラーで終了しました（%2）</translation>
    </message>
    <message>
        <source>%1 is still enabled</source>
        <translation>%1はまだ有効です</translation>
    </message>
    <message>
        <source>%1 is masked</source>
        <translation>%1はマスクされています</translation>
    </message>
</context>
<context>
    <name>zenlot::UpdateViewModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>アップデートを確認中…</translation>
    </message>
    <message>
        <source>Zenlot %1 is available</source>
        <translation>Zenlot %1が利用可能です</translation>
    </message>
    <message>
        <source>Zenlot is up to date</source>
        <translation>Zenlotは最新です</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>お使いのバージョンは%1です。</translation>
    </message>
    <message>
        <source>Version %1 is the newest release.</source>
        <translation>バージョン%1は最新のリリースです。</translation>
    </message>
    <message>
        <source>You have version %1, which is ahead of the newest release, %2.</source>
        <translation>お使いのバージョン%1は、最新のリリース%2より新しいものです。</translation>
    </message>
    <message>
        <source>No browser could be opened for this address:</source>
        <translation>次のアドレスをブラウザで開けませんでした:</translation>
    </message>
    <message>
        <source>Released on %1.</source>
        <translation>リリース日: %1</translation>
    </message>
    <message>
        <source>This build has no update feed</source>
        <translation>このビルドにはアップデート元がありません</translation>
    </message>
    <message>
        <source>Zenlot could not check for updates</source>
        <translation>アップデートを確認できませんでした</translation>
    </message>
    <message>
        <source>You have version %1. New ones come from where you got Zenlot.</source>
        <translation>お使いのバージョンは%1です。新しいバージョンはZenlotの入手元から提供されます。</translation>
    </message>
    <message>
        <source>The update feed can’t be reached. Check your network connection and try again.</source>
        <translation>アップデート元に接続できません。ネットワーク接続を確認して、もう一度お試しください。</translation>
    </message>
    <message>
        <source>The update feed takes too long to answer. Try again later.</source>
        <translation>アップデート元の応答に時間がかかりすぎています。後でもう一度お試しください。</translation>
    </message>
    <message>
        <source>No secure connection to the update feed could be made.</source>
        <translation>アップデート元への安全な接続を確立できませんでした。</translation>
    </message>
    <message>
        <source>The update feed is not available at the moment. Try again later.</source>
        <translation>アップデート元は現在利用できません。後でもう一度お試しください。</translation>
    </message>
    <message>
        <source>The answer of the update feed makes no sense. Try again later.</source>
        <translation>アップデート元の応答を解釈できません。後でもう一度お試しください。</translation>
    </message>
</context>
<context>
    <name>zenlot::AppSettings</name>
    <message>
        <source>Your settings can't be saved at the moment. Zenlot keeps trying.</source>
        <translation>現在、設定を保存できません。Zenlotは保存を繰り返し試みます。</translation>
    </message>
    <message>
        <source>The file with your settings was damaged. What could be read was kept; the old file has “.damaged” in its name.</source>
        <translation>設定ファイルが破損していました。読み取れた内容は保持され、元のファイルの名前には「.damaged」が付いています。</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
</TS>
