<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AppPortGroup</name>
    <message>
        <source>Port %1</source>
        <translation>端口 %1</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsContent</name>
    <message>
        <source>Turn On</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Re-check</source>
        <translation>重新检查</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>完成</translation>
    </message>
</context>
<context>
    <name>BackgroundItemsWindow</name>
    <message>
        <source>Login Items</source>
        <translation>登录项</translation>
    </message>
</context>
<context>
    <name>CheckPortIntent</name>
    <message>
        <source>Check Port</source>
        <translation>检查端口</translation>
    </message>
    <message>
        <source>Port Number</source>
        <translation>端口号</translation>
    </message>
    <message>
        <source>A port number between 1 and 65535</source>
        <translation>1 到 65535 之间的端口号</translation>
    </message>
    <message>
        <source>Which port would you like to check?</source>
        <translation>要检查哪个端口？</translation>
    </message>
    <message>
        <source>Please enter a valid port number between 1 and 65535.</source>
        <translation>请输入 1 到 65535 之间的有效端口号。</translation>
    </message>
    <message>
        <source>Port %1 is free — nothing is using it.</source>
        <translation>端口 %1 空闲，没有进程在使用它。</translation>
    </message>
    <message>
        <source>Port %1 is used by: %2</source>
        <translation>端口 %1 正被使用：%2</translation>
    </message>
    <message>
        <source>Check a port in %1</source>
        <translation>在 %1 中检查端口</translation>
    </message>
    <message>
        <source>What is using a port in %1</source>
        <translation>在 %1 中查看端口被谁占用</translation>
    </message>
    <message>
        <source>Port lookup in %1</source>
        <translation>在 %1 中查询端口</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
</context>
<context>
    <name>CollapsibleSection</name>
    <message>
        <source>open</source>
        <translation>已展开</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>已折叠</translation>
    </message>
</context>
<context>
    <name>CommandCard</name>
    <message>
        <source>To allow it, run this in a terminal:</source>
        <translation>要允许它，请在终端中运行：</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>已拷贝</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>拷贝</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>Toggle Inspector</source>
        <translation>显示/隐藏检查器</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>检查器</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stop the server so that it stays stopped</source>
        <translation>停止服务器并保持停止</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Add to %1</source>
        <translation>添加到“%1”</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Remove from %1</source>
        <translation>从“%1”中移除</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
</context>
<context>
    <name>ExceptionSection</name>
    <message>
        <source>e.g. 3000</source>
        <translation>例如 3000</translation>
    </message>
    <message>
        <source>Ignored ports</source>
        <translation>忽略的端口</translation>
    </message>
    <message>
        <source>e.g. python</source>
        <translation>例如 python</translation>
    </message>
    <message>
        <source>Ignored processes</source>
        <translation>忽略的进程</translation>
    </message>
</context>
<context>
    <name>ForceQuitButton</name>
    <message>
        <source>Force Quit</source>
        <translation>强制退出</translation>
    </message>
    <message>
        <source>Force-quit selected process</source>
        <translation>强制退出所选进程</translation>
    </message>
</context>
<context>
    <name>ForceQuitDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Force Quit Process?</source>
        <translation>强制退出进程？</translation>
    </message>
</context>
<context>
    <name>GeneralTab</name>
    <message>
        <source>Show in menu bar</source>
        <translation>在状态区域显示</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>在任务栏显示</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>登录时启动</translation>
    </message>
    <message>
        <source>Keyboard Shortcut</source>
        <translation>键盘快捷键</translation>
    </message>
    <message>
        <source>⌃⌥⇧P — opens the menu bar popover from anywhere</source>
        <translation>Ctrl+Alt+Shift+P — 从任何位置打开 Zenlot</translation>
    </message>
    <message>
        <source>Enable global shortcut</source>
        <translation>启用全局快捷键</translation>
    </message>
</context>
<context>
    <name>GlobalShortcut</name>
    <message>
        <source>Open Zenlot</source>
        <translation>打开 Zenlot</translation>
    </message>
</context>
<context>
    <name>InstallError</name>
    <message>
        <source>Zenlot is blocked from running in the background. Open System Settings → General → Login Items &amp; Extensions and turn Zenlot back on under &quot;Allow in the Background&quot;, then click Re-check.</source>
        <translation>Zenlot 被阻止在后台运行：systemd 屏蔽了它的监视器。“打开登录项”会说明如何允许它；然后点按“重新检查”。</translation>
    </message>
    <message>
        <source>Zenlot is still blocked. Toggle &quot;Allow in the Background&quot; on for Zenlot in System Settings → General → Login Items &amp; Extensions.</source>
        <translation>Zenlot 仍被阻止。“打开登录项”会显示解除屏蔽其监视器的命令。</translation>
    </message>
</context>
<context>
    <name>LogLines</name>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Unmark Row</source>
        <translation>取消标记此行</translation>
    </message>
    <message>
        <source>Mark Row</source>
        <translation>标记此行</translation>
    </message>
</context>
<context>
    <name>LogTabView</name>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>清除日志</translation>
    </message>
    <message>
        <source>Unmark</source>
        <translation>取消标记</translation>
    </message>
    <message>
        <source>Clear marked rows</source>
        <translation>取消所有行的标记</translation>
    </message>
    <message>
        <source>No log entries yet</source>
        <translation>暂无日志条目</translation>
    </message>
    <message>
        <source>At %1 MB the log begins anew, and one old log is kept beside it.</source>
        <translation>日志达到 %1 MB 时重新开始，并在旁边保留一份旧日志。</translation>
    </message>
</context>
<context>
    <name>MonitorPage</name>
    <message>
        <source>Background Monitor</source>
        <translation>后台监视器</translation>
    </message>
    <message>
        <source>A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn&apos;t running. You&apos;ll be notified the moment a crash blocks your dev server.</source>
        <translation>一个轻量的守护进程，全天候监视端口冲突，即使 Zenlot 没有运行。一旦崩溃导致开发服务器受阻，您会立即收到通知。</translation>
    </message>
    <message>
        <source>Background monitor enabled</source>
        <translation>后台监视器已启用</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>打开登录项</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>已启用 — 重新检查</translation>
    </message>
    <message>
        <source>Skip for now</source>
        <translation>暂时跳过</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>正在安装…</translation>
    </message>
    <message>
        <source>Enable</source>
        <translation>启用</translation>
    </message>
</context>
<context>
    <name>ObstacleText</name>
    <message>
        <source>%1 has reserved it without listening.</source>
        <translation>%1 占用了它但没有监听。</translation>
    </message>
    <message>
        <source>%1 uses it for a connection to port %2. Some servers can&apos;t have it until that ends.</source>
        <translation>%1 正用它连接到端口 %2。连接结束前，有些服务器无法使用它。</translation>
    </message>
    <message>
        <source>Its last connection has just ended. Some servers can&apos;t have it for another %1 s.</source>
        <translation>它的最后一个连接刚刚结束。有些服务器还要等 %1 秒才能使用它。</translation>
    </message>
    <message>
        <source>The system keeps it for servers that ask for it.</source>
        <translation>系统把它留给指定要它的服务器。</translation>
    </message>
    <message>
        <source>Only privileged programs can have it.</source>
        <translation>只有特权程序才能使用它。</translation>
    </message>
    <message>
        <source>A process of another user</source>
        <translation>另一个用户的进程</translation>
    </message>
</context>
<context>
    <name>OnboardingWindow</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>欢迎使用 Zenlot</translation>
    </message>
</context>
<context>
    <name>OriginNote</name>
    <message>
        <source>%1 (deleted folder)</source>
        <translation>%1（文件夹已删除）</translation>
    </message>
    <message>
        <source>Open to the network</source>
        <translation>对网络开放</translation>
    </message>
    <message>
        <source>Perhaps left behind</source>
        <translation>可能被遗留</translation>
    </message>
</context>
<context>
    <name>OriginRows</name>
    <message>
        <source>%1, of a user</source>
        <translation>%1（用户）</translation>
    </message>
    <message>
        <source>%1, of the system</source>
        <translation>%1（系统）</translation>
    </message>
    <message>
        <source>%1 (IPv6 only)</source>
        <translation>%1（仅 IPv6）</translation>
    </message>
    <message>
        <source>This machine only</source>
        <translation>仅本机</translation>
    </message>
    <message>
        <source>The network, unless a firewall stops it</source>
        <translation>网络（除非被防火墙阻止）</translation>
    </message>
    <message>
        <source>Everyone who can reach %1, unless a firewall stops them</source>
        <translation>能访问 %1 的任何人（除非被防火墙阻止）</translation>
    </message>
    <message>
        <source>%1 processes: %2</source>
        <translation>%1 个进程：%2</translation>
    </message>
    <message>
        <source>its folder is deleted</source>
        <translation>文件夹已删除</translation>
    </message>
    <message>
        <source>it has no terminal</source>
        <translation>没有终端</translation>
    </message>
    <message>
        <source>what started it has ended</source>
        <translation>启动它的程序已结束</translation>
    </message>
    <message>
        <source>its session is over</source>
        <translation>会话已结束</translation>
    </message>
    <message>
        <source>nobody is connected</source>
        <translation>没有客户端连接</translation>
    </message>
    <message>
        <source>Perhaps: %1</source>
        <translation>可能：%1</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>提交</translation>
    </message>
    <message>
        <source>Branch</source>
        <translation>分支</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>%1 (deleted)</source>
        <translation>%1（已删除）</translation>
    </message>
    <message>
        <source>Runs</source>
        <translation>运行</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>命令行</translation>
    </message>
    <message>
        <source>Started by</source>
        <translation>启动者</translation>
    </message>
    <message>
        <source>Container</source>
        <translation>容器</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>镜像</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>服务</translation>
    </message>
    <message>
        <source>Its port</source>
        <translation>容器端口</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>单元</translation>
    </message>
    <message>
        <source>Socket</source>
        <translation>套接字</translation>
    </message>
    <message>
        <source>Listens on</source>
        <translation>监听于</translation>
    </message>
    <message>
        <source>Open to</source>
        <translation>开放给</translation>
    </message>
    <message>
        <source>Shared by</source>
        <translation>共享者</translation>
    </message>
    <message>
        <source>Clients</source>
        <translation>客户端</translation>
    </message>
    <message>
        <source>Left behind</source>
        <translation>遗留</translation>
    </message>
</context>
<context>
    <name>PortField</name>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
</context>
<context>
    <name>PortMenu</name>
    <message>
        <source>Copy Port</source>
        <translation>拷贝端口</translation>
    </message>
    <message>
        <source>Copy PID</source>
        <translation>拷贝 PID</translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation>拷贝路径</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>显示详细信息</translation>
    </message>
    <message>
        <source>Force Quit…</source>
        <translation>强制退出…</translation>
    </message>
</context>
<context>
    <name>PortMonitoringTab</name>
    <message>
        <source>Show a notification whenever any new process starts listening on a port</source>
        <translation>每当有新进程开始监听端口时显示通知</translation>
    </message>
    <message>
        <source>Notify on all port activity</source>
        <translation>通知所有端口活动</translation>
    </message>
    <message>
        <source>Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.</source>
        <translation>在后台监视开发运行环境，检测到端口冲突时通知您。登录时自动运行。</translation>
    </message>
    <message>
        <source>Conflict Monitoring</source>
        <translation>冲突监视</translation>
    </message>
    <message>
        <source>Open Login Items</source>
        <translation>打开登录项</translation>
    </message>
    <message>
        <source>I&apos;ve enabled it — re-check</source>
        <translation>已启用 — 重新检查</translation>
    </message>
    <message>
        <source>Port Activity Exceptions</source>
        <translation>端口活动例外</translation>
    </message>
    <message>
        <source>Conflict Monitoring Exceptions</source>
        <translation>冲突监视例外</translation>
    </message>
    <message>
        <source>The system tells of refused ports exactly.</source>
        <translation>系统会准确报告被拒绝的端口。</translation>
    </message>
    <message>
        <source>For exact alerts an administrator turns on the helper of the system: %1</source>
        <translation>要获得准确的提醒，请由管理员启用系统助手：%1</translation>
    </message>
</context>
<context>
    <name>ProcessDetailContent</name>
    <message>
        <source>Identity</source>
        <translation>标识</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>资源</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>应用程序</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>项目</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>来源</translation>
    </message>
</context>
<context>
    <name>ProcessDetailPanel</name>
    <message>
        <source>Inspector</source>
        <translation>检查器</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>正在载入…</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>General</source>
        <translation>通用</translation>
    </message>
    <message>
        <source>Port Monitoring</source>
        <translation>端口监视</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Scanning…</source>
        <translation>正在扫描…</translation>
    </message>
    <message>
        <source>No listening ports</source>
        <translation>没有正在监听的端口</translation>
    </message>
    <message>
        <source>Listening ports</source>
        <translation>正在监听的端口</translation>
    </message>
</context>
<context>
    <name>SidebarRow</name>
    <message>
        <source>open</source>
        <translation>已展开</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>已折叠</translation>
    </message>
</context>
<context>
    <name>StopDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Stop the Server?</source>
        <translation>停止服务器？</translation>
    </message>
</context>
<context>
    <name>StopText</name>
    <message>
        <source>Stops container %1.</source>
        <translation>停止容器 %1。</translation>
    </message>
    <message>
        <source>Stops container %1 of compose project %2.</source>
        <translation>停止 compose 项目 %2 的容器 %1。</translation>
    </message>
    <message>
        <source>%1 is a program that people work in or that the session needs; it is not stopped for a port.</source>
        <translation>%1 是用户正在使用或会话需要的程序，不会为端口而停止。</translation>
    </message>
    <message>
        <source>It belongs to another user, and to no service or container that could be stopped.</source>
        <translation>它属于其他用户，且不属于可停止的服务或容器。</translation>
    </message>
    <message>
        <source>Nobody can tell what would have to be stopped.</source>
        <translation>无法判断需要停止什么。</translation>
    </message>
    <message>
        <source>Stops %1, one of your services.</source>
        <translation>停止您的服务 %1。</translation>
    </message>
    <message>
        <source>Stops %1, a service of the system.</source>
        <translation>停止系统服务 %1。</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2).</source>
        <translation>停止 %1（PID %2）。</translation>
    </message>
    <message>
        <source>Stops %1 (PID %2), which started the server on port %3.</source>
        <translation>停止启动了端口 %3 上服务器的 %1（PID %2）。</translation>
    </message>
    <message>
        <source>1 client is connected.</source>
        <translation>有 1 个客户端已连接。</translation>
    </message>
    <message>
        <source>%1 clients are connected.</source>
        <translation>有 %1 个客户端已连接。</translation>
    </message>
    <message>
        <source>Ports that go with it: %1.</source>
        <translation>一并关闭的端口：%1。</translation>
    </message>
    <message>
        <source>%1 may start it again.</source>
        <translation>%1 可能会再次启动它。</translation>
    </message>
    <message>
        <source>%1 has been asked to end and still holds port %2. End it by force?</source>
        <translation>已请求 %1 结束，但它仍占用端口 %2。强制结束？</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>另一个进程</translation>
    </message>
    <message>
        <source>%1 has ended, and %2 has taken port %3 again.</source>
        <translation>%1 已结束，%2 又占用了端口 %3。</translation>
    </message>
    <message>
        <source>%1 could not be stopped: %2</source>
        <translation>无法停止 %1：%2</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>软件更新</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>稍后</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>发行说明</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>重试</translation>
    </message>
</context>
<context>
    <name>WelcomePage</name>
    <message>
        <source>Welcome to Zenlot</source>
        <translation>欢迎使用 Zenlot</translation>
    </message>
    <message>
        <source>Zenlot watches your network ports so you always know what&apos;s running — and what&apos;s blocking what.</source>
        <translation>Zenlot 监视您的网络端口，让您随时了解什么在运行、什么被什么占用。</translation>
    </message>
    <message>
        <source>Type any port number to see which process is using it.</source>
        <translation>输入任意端口号，即可查看哪个进程正在使用它。</translation>
    </message>
    <message>
        <source>Instant port lookup</source>
        <translation>即时端口查询</translation>
    </message>
    <message>
        <source>Get notified when a dev server can&apos;t start because a port is taken.</source>
        <translation>当开发服务器因端口被占用而无法启动时收到通知。</translation>
    </message>
    <message>
        <source>Conflict notifications</source>
        <translation>冲突通知</translation>
    </message>
    <message>
        <source>Free up a blocked port without opening Terminal.</source>
        <translation>无需打开终端即可释放被占用的端口。</translation>
    </message>
    <message>
        <source>One-click force quit</source>
        <translation>一键强制退出</translation>
    </message>
    <message>
        <source>Folytatás</source>
        <translation>继续</translation>
    </message>
</context>
<context>
    <name>zenlot::AppDelegate</name>
    <message>
        <source>Open Zenlot</source>
        <translation>打开 Zenlot</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>设置…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>检查更新…</translation>
    </message>
    <message>
        <source>Quit Zenlot</source>
        <translation>退出 Zenlot</translation>
    </message>
    <message>
        <source>Port number…</source>
        <translation>端口号…</translation>
    </message>
    <message>
        <source>Port %1 blocked by %2</source>
        <translation>端口 %1 被 %2 占用</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>冲突</translation>
    </message>
    <message>
        <source>Kill %1</source>
        <translation>终止 %1</translation>
    </message>
    <message>
        <source>Ignore Port %1</source>
        <translation>忽略端口 %1</translation>
    </message>
    <message>
        <source>Ignore %1</source>
        <translation>忽略 %1</translation>
    </message>
    <message>
        <source>Clear Conflict Indicator</source>
        <translation>清除冲突提示</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单</translation>
    </message>
</context>
<context>
    <name>zenlot::BackgroundItemsViewModel</name>
    <message>
        <source>Zenlot is blocked from running in the background</source>
        <translation>Zenlot 被禁止在后台运行</translation>
    </message>
    <message>
        <source>Zenlot may run in the background</source>
        <translation>Zenlot 可以在后台运行</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor is turned off</source>
        <translation>Zenlot 的后台监视器已关闭</translation>
    </message>
    <message>
        <source>Zenlot&apos;s background monitor was not found</source>
        <translation>未找到 Zenlot 的后台监视器</translation>
    </message>
    <message>
        <source>The background monitor is masked, so systemd refuses to start it. You, an administrator or a clean-up tool may have switched it off.</source>
        <translation>后台监视器已被屏蔽 (masked)，因此 systemd 拒绝启动它。可能是您、管理员或清理工具将其关闭了。</translation>
    </message>
    <message>
        <source>The background monitor starts when you log in. Click Re-check in Zenlot to go on.</source>
        <translation>后台监视器会在登录时启动。请在 Zenlot 中点按“重新检查”以继续。</translation>
    </message>
    <message>
        <source>Nothing blocks it. Turn it on here, then click Re-check in Zenlot.</source>
        <translation>没有任何阻止。请在此处打开，然后在 Zenlot 中点按“重新检查”。</translation>
    </message>
    <message>
        <source>systemd knows no such service of yours. Either Zenlot is not completely installed, or your session is not run by systemd.</source>
        <translation>systemd 中没有您的此项服务。可能是 Zenlot 未完整安装，或者您的会话不由 systemd 管理。</translation>
    </message>
    <message>
        <source>Still blocked</source>
        <translation>仍被阻止</translation>
    </message>
    <message>
        <source>Blocked</source>
        <translation>已阻止</translation>
    </message>
    <message>
        <source>Allowed</source>
        <translation>已允许</translation>
    </message>
    <message>
        <source>Still off</source>
        <translation>仍为关闭</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Still not found</source>
        <translation>仍未找到</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>未找到</translation>
    </message>
</context>
<context>
    <name>zenlot::ChildAppService</name>
    <message>
        <source>%1 cannot be run</source>
        <translation>无法运行 %1</translation>
    </message>
    <message>
        <source>%1 has ended with a failure again and again</source>
        <translation>%1 多次因错误退出</translation>
    </message>
</context>
<context>
    <name>zenlot::ContentViewModel</name>
    <message>
        <source>Enter a port number</source>
        <translation>输入端口号</translation>
    </message>
    <message>
        <source>Port %1 is free</source>
        <translation>端口 %1 空闲</translation>
    </message>
    <message>
        <source>%1 process on port %2</source>
        <translation>端口 %2 上有 %1 个进程</translation>
    </message>
    <message>
        <source>%1 processes on port %2</source>
        <translation>端口 %2 上有 %1 个进程</translation>
    </message>
    <message>
        <source>Force-quit %1 (PID %2)? Any unsaved work will be lost.</source>
        <translation>强制退出 %1 (PID %2)？未保存的工作将会丢失。</translation>
    </message>
    <message>
        <source>Force Quit %1</source>
        <translation>强制退出 %1</translation>
    </message>
    <message>
        <source>Stop %1</source>
        <translation>停止 %1</translation>
    </message>
    <message>
        <source>End by Force</source>
        <translation>强制结束</translation>
    </message>
</context>
<context>
    <name>zenlot::PortNotificationManager</name>
    <message>
        <source>Kill Process</source>
        <translation>终止进程</translation>
    </message>
    <message>
        <source>Ignore Port</source>
        <translation>忽略端口</translation>
    </message>
    <message>
        <source>Ignore Process</source>
        <translation>忽略进程</translation>
    </message>
    <message>
        <source>Port %1 is already in use</source>
        <translation>端口 %1 已被占用</translation>
    </message>
    <message>
        <source>%1 (PID %2) is blocking port %3 — kill it to free the port.</source>
        <translation>%1 (PID %2) 正占用端口 %3，终止它即可释放端口。</translation>
    </message>
    <message>
        <source>Port %1 is now occupied</source>
        <translation>端口 %1 现已被占用</translation>
    </message>
    <message>
        <source>%1 (PID %2) started listening on port %3</source>
        <translation>%1 (PID %2) 开始监听端口 %3</translation>
    </message>
    <message>
        <source>%1 is blocking port %2</source>
        <translation>%1 正占用端口 %2</translation>
    </message>
    <message>
        <source>%1 started listening on port %2</source>
        <translation>%1 开始监听端口 %2</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… 还有 %1 个</translation>
    </message>
    <message>
        <source>More ports are already in use. Zenlot shows them all.</source>
        <translation>还有端口已被占用。Zenlot 可显示全部。</translation>
    </message>
    <message>
        <source>More ports are now occupied. Zenlot shows them all.</source>
        <translation>又有端口被占用。Zenlot 可显示全部。</translation>
    </message>
    <message>
        <source>Open Zenlot</source>
        <translation>打开 Zenlot</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessDetailViewModel</name>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Network (%1)</source>
        <translation>网络 (%1)</translation>
    </message>
    <message>
        <source>Parent</source>
        <translation>父进程</translation>
    </message>
    <message>
        <source>PID %1</source>
        <translation>PID %1</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>端口</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>协议</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>启动时间</translation>
    </message>
    <message>
        <source>Elapsed</source>
        <translation>已运行</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>标志</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>内存</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>常驻</translation>
    </message>
    <message>
        <source>Virtual</source>
        <translation>虚拟</translation>
    </message>
    <message>
        <source>Open FDs</source>
        <translation>打开的 FD</translation>
    </message>
    <message>
        <source>Bundle ID</source>
        <translation>套装 ID</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>构建版本</translation>
    </message>
    <message>
        <source>Average CPU</source>
        <translation>平均 CPU</translation>
    </message>
</context>
<context>
    <name>zenlot::ProcessListModel</name>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
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
        <translation>我的进程</translation>
    </message>
    <message>
        <source>System</source>
        <translation>系统</translation>
    </message>
</context>
<context>
    <name>zenlot::StatusMenu</name>
    <message>
        <source>Port number…</source>
        <translation>端口号…</translation>
    </message>
</context>
<context>
    <name>zenlot::SystemdAppService</name>
    <message>
        <source>%1 cannot be enabled</source>
        <translation>无法启用 %1</translation>
    </message>
    <message>
        <source>systemd did not answer in time</source>
        <translation>systemd 未及时响应</translation>
    </message>
    <message>
        <source>%1 did not start (%2)</source>
        <translation>%1 未能启动 (%2)</translation>
    </message>
    <message>
        <source>%1 has ended with a failure (%2)</source>
        <translation>%1 因错误而结束 (%2)</translation>
    </message>
    <message>
        <source>%1 is still enabled</source>
        <translation>%1 仍处于启用状态</translation>
    </message>
    <message>
        <source>%1 is masked</source>
        <translation>%1 已被屏蔽</translation>
    </message>
</context>
<context>
    <name>zenlot::UpdateViewModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>正在检查更新…</translation>
    </message>
    <message>
        <source>Zenlot %1 is available</source>
        <translation>Zenlot %1 现已推出</translation>
    </message>
    <message>
        <source>Zenlot is up to date</source>
        <translation>Zenlot 已是最新版本</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>您的版本为 %1。</translation>
    </message>
    <message>
        <source>Version %1 is the newest release.</source>
        <translation>%1 是最新版本。</translation>
    </message>
    <message>
        <source>You have version %1, which is ahead of the newest release, %2.</source>
        <translation>您的版本 %1 比最新发布的 %2 更新。</translation>
    </message>
    <message>
        <source>No browser could be opened for this address:</source>
        <translation>无法用浏览器打开此地址：</translation>
    </message>
    <message>
        <source>Released on %1.</source>
        <translation>发布日期：%1。</translation>
    </message>
    <message>
        <source>This build has no update feed</source>
        <translation>此构建版本没有更新源</translation>
    </message>
    <message>
        <source>Zenlot could not check for updates</source>
        <translation>Zenlot 无法检查更新</translation>
    </message>
    <message>
        <source>You have version %1. New ones come from where you got Zenlot.</source>
        <translation>您的版本为 %1。新版本来自您获取 Zenlot 的渠道。</translation>
    </message>
    <message>
        <source>The update feed can’t be reached. Check your network connection and try again.</source>
        <translation>无法连接更新源。请检查网络连接后重试。</translation>
    </message>
    <message>
        <source>The update feed takes too long to answer. Try again later.</source>
        <translation>更新源响应超时。请稍后重试。</translation>
    </message>
    <message>
        <source>No secure connection to the update feed could be made.</source>
        <translation>无法与更新源建立安全连接。</translation>
    </message>
    <message>
        <source>The update feed is not available at the moment. Try again later.</source>
        <translation>更新源目前不可用。请稍后重试。</translation>
    </message>
    <message>
        <source>The answer of the update feed makes no sense. Try again later.</source>
        <translation>无法理解更新源的响应。请稍后重试。</translation>
    </message>
</context>
<context>
    <name>zenlot::AppSettings</name>
    <message>
        <source>Your settings can't be saved at the moment. Zenlot keeps trying.</source>
        <translation>目前无法保存设置。Zenlot 会继续尝试。</translation>
    </message>
    <message>
        <source>The file with your settings was damaged. What could be read was kept; the old file has “.damaged” in its name.</source>
        <translation>设置文件已损坏。可读取的内容已保留；旧文件名中带有“.damaged”。</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>OK</source>
        <translation>好</translation>
    </message>
</context>
</TS>
