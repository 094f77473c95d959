#include "inventory/origin/program_kind.h"

#include "inventory/origin/masked_command.h"
#include "inventory/process_names.h"
#include "inventory/programs/invocation.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zenlot {
namespace {

// The names by which programs of a kind run, separated by blanks. The kernel cuts names off after
// fifteen bytes.
struct KindRow {
    ProgramKind kind;
    std::string_view names;
};

constexpr std::array<KindRow, 13> kKinds{{
    {ProgramKind::shell,
     " sh bash zsh fish dash ksh mksh tcsh csh nu xonsh elvish pwsh ash busybox "},
    {ProgramKind::scriptRunner,
     " npm npx pnpm pnpx yarn bunx make gmake just task foreman honcho overmind hivemind goreman "
     "turbo nx lerna concurrently poetry pipenv pdm uv hatch tox nox rake cargo go gradle mvn "
     "dotnet composer bazel entr direnv mise asdf dotenv doppler "},
    {ProgramKind::watcher,
     " nodemon watchexec air reflex cargo-watch bacon wgo modd guard ts-node-dev watchmedo fresh "
     "gow supervisor forever watchman-make "},
    {ProgramKind::multiplexer,
     " tmux screen SCREEN zellij byobu dtach abduco dvtm mosh-server shpool "},
    {ProgramKind::terminal,
     " gnome-terminal-server gnome-terminal- konsole xterm uxterm alacritty kitty wezterm "
     "wezterm-gui foot footclient xfce4-terminal terminator tilix ptyxis ptyxis-agent kgx "
     "gnome-console ghostty lxterminal mate-terminal qterminal st urxvt urxvtd rxvt rio guake "
     "yakuake terminology deepin-terminal cool-retro-term contour warp-terminal tabby ttyd "},
    {ProgramKind::editor,
     " code code-oss code-insiders codium vscodium code-server code-tunnel cursor windsurf zed "
     "zed-editor zeditor idea pycharm webstorm phpstorm goland clion rider rubymine rustrover "
     "datagrip studio android-studio fleet nvim vim vi gvim emacs emacsclient hx helix kak micro "
     "nano sublime_text gnome-builder kate kdevelop geany qtcreator eclipse lapce "},
    {ProgramKind::codingAgent, " aider opencode goose amp crush "},
    {ProgramKind::browser,
     " firefox firefox-esr firefox-bin chrome google-chrome chromium chromium-browse brave "
     "brave-browser msedge opera vivaldi vivaldi-bin epiphany librewolf falkon konqueror "
     "qutebrowser zen floorp thorium "},
    {ProgramKind::remoteLogin, " sshd sshd-session dropbear telnetd in.telnetd rlogind "},
    {ProgramKind::cron, " cron crond anacron fcron atd "},
    {ProgramKind::supervisor,
     " supervisord runsv runsvdir s6-supervise s6-svscan monit circusd pm2 god dinit PM2 "},
    {ProgramKind::serviceManager, " systemd init runit openrc-init launchd "},
    {ProgramKind::session,
     " (sd-pam) login gdm gdm3 gdm-session-worker gdm-wayland-session gdm-x-session sddm "
     "sddm-helper lightdm greetd gnome-session gnome-session-binary gnome-session-b gnome-shell "
     "plasmashell kwin_wayland kwin_x11 ksmserver plasma_session startplasma-wayland "
     "startplasma-x11 kded5 kded6 krunner xfce4-session xfce4-panel xfwm4 xfdesktop cinnamon "
     "cinnamon-session mate-session mate-panel marco lxqt-session lxqt-panel lxsession lxpanel "
     "budgie-panel sway Hyprland river niri wayfire labwc weston i3 openbox awesome bspwm dwm "
     "xmonad fluxbox icewm Xorg Xwayland xinit startx dbus-daemon dbus-broker "
     "dbus-broker-launch rofi dmenu ulauncher albert synapse nautilus dolphin thunar "},
}};

constexpr std::size_t kLongestName = 15; // of the kernel

// "-zsh", "sshd: ada@pts/3", "tmux: server", "npm run dev", "python3.11".
std::string_view bareName(std::string_view name) {
    name = name.substr(name.rfind('/') + 1);
    if (name.starts_with('-'))
        name.remove_prefix(1);
    return name.substr(0, name.find_first_of(": "));
}

// Of a program or a script: "/usr/lib/npm/bin/npm-cli.js" is npm.
std::string_view toolName(std::string_view path) {
    std::string_view name = bareName(path);
    for (const std::string_view ending : {".js", ".cjs", ".mjs", ".py", "-cli"}) {
        if (name.ends_with(ending))
            name.remove_suffix(ending.size());
    }
    return name;
}

using KindsOfNames = std::unordered_map<std::string_view, ProgramKind>;

KindsOfNames kindsOfNames() {
    KindsOfNames kinds;
    for (const KindRow& row : kKinds) {
        for (std::size_t start = 1; start < row.names.size();) {
            const std::size_t end = row.names.find(' ', start);
            const std::string_view name = row.names.substr(start, end - start);
            kinds.try_emplace(name, row.kind);
            kinds.try_emplace(name.substr(0, kLongestName), row.kind);
            start = end + 1;
        }
    }
    return kinds;
}

ProgramKind kindOfName(std::string_view name) {
    static const KindsOfNames kinds = kindsOfNames();
    const auto found = kinds.find(name);
    return found == kinds.end() ? ProgramKind::other : found->second;
}

// The path of a program may hold blanks; what has rewritten its title has blanks behind its name.
std::string_view programOf(const ProcessGlimpse& process) {
    if (process.commandLine.empty())
        return bareName(process.name);
    const std::string_view first = process.commandLine.front();
    return first.starts_with('/') ? first.substr(first.rfind('/') + 1) : bareName(first);
}

// A shell that has been given a script or a command waits for nobody's keys.
bool isScript(const ProcessGlimpse& shell) {
    return std::any_of(shell.commandLine.begin() + (shell.commandLine.empty() ? 0 : 1),
                       shell.commandLine.end(), [](const std::string& word) {
                           const bool isCommand = word.starts_with('-') &&
                                                  !word.starts_with("--") &&
                                                  word.find('c') != std::string::npos;
                           return isCommand || (!word.empty() && !word.starts_with('-'));
                       });
}

bool hasWord(const ProcessGlimpse& process, std::string_view word) {
    return std::ranges::any_of(process.commandLine, [word](const std::string& each) {
        return each == word ||
               (each.starts_with(word) && each.size() > word.size() && each[word.size()] == '=');
    });
}

// A first argument that says what is done, as in "next dev".
bool isVerb(std::string_view word) {
    constexpr std::size_t kLongestVerb = 16;
    return !word.empty() && word.size() <= kLongestVerb &&
           std::ranges::all_of(word,
                               [](char letter) {
                                   return (letter >= 'a' && letter <= 'z') || letter == '-' ||
                                          letter == ':' || letter == '_';
                               }) &&
           word.front() != '-';
}

// Of the tool that an interpreter runs, npm as a script of Node among them.
ProgramKind kindOfScript(const ProcessGlimpse& process) {
    const auto invocation = identifyInvocation(process.commandLine, process.executable);
    // Scripts may be called like anything, and only these are known by theirs.
    constexpr std::array kKindsOfScripts{ProgramKind::scriptRunner, ProgramKind::watcher,
                                         ProgramKind::codingAgent, ProgramKind::supervisor};
    if (!invocation)
        return ProgramKind::other;
    for (const std::string_view each :
         {std::string_view(invocation->tool), toolName(invocation->script)}) {
        const ProgramKind kind = kindOfName(each);
        if (std::ranges::find(kKindsOfScripts, kind) != kKindsOfScripts.end())
            return kind;
    }
    return ProgramKind::other;
}

} // namespace

ProgramKind kindOf(const ProcessGlimpse& process) {
    const std::string_view program = programOf(process);
    // Many an editor and browser runs under another name than its program has.
    std::array<std::string_view, 3> names{program, bareName(process.name),
                                          bareName(process.executable)};
    ProgramKind kind = ProgramKind::other;
    for (std::size_t place = 0; place < names.size() && kind == ProgramKind::other; ++place)
        kind = kindOfName(names[place]);
    if (kind == ProgramKind::shell)
        return isScript(process) ? ProgramKind::shellScript : kind;
    if (kind != ProgramKind::other)
        return kind;
    if (program == "node" && (hasWord(process, "--watch") || hasWord(process, "--watch-path")))
        return ProgramKind::watcher;
    return kindOfScript(process);
}

bool isNeverStopped(ProgramKind kind) {
    switch (kind) {
    case ProgramKind::shell:
    case ProgramKind::multiplexer:
    case ProgramKind::terminal:
    case ProgramKind::editor:
    case ProgramKind::codingAgent:
    case ProgramKind::browser:
    case ProgramKind::remoteLogin:
    case ProgramKind::cron:
    case ProgramKind::session:
    case ProgramKind::serviceManager:
    case ProgramKind::supervisor:
        return true;
    case ProgramKind::other:
    case ProgramKind::scriptRunner:
    case ProgramKind::watcher:
    case ProgramKind::shellScript:
        break;
    }
    return false;
}

std::string spokenCommand(const ProcessGlimpse& process) {
    const std::string fallback = sanitizedUtf8(programOf(process));
    // A title that a program has given itself stands in one word, behind which nothing is left.
    if (process.commandLine.empty())
        return fallback;
    const auto invocation = identifyInvocation(process.commandLine, process.executable);
    if (!invocation)
        return fallback;
    // A module is called by its dots, and told as the file that it may be.
    std::string module = invocation->script;
    std::ranges::replace(module, '/', '.');
    std::string command;
    if (!module.empty() && module == invocation->tool)
        command = module;
    else if (!invocation->script.empty() && !isInstalledScript(invocation->script))
        command = invocation->script.substr(invocation->script.rfind('/') + 1);
    else if (!invocation->tool.empty() && invocation->tool.find(' ') == std::string::npos)
        command = bareName(invocation->tool);
    else if (!invocation->script.empty())
        command = toolName(invocation->script);
    else
        return fallback;
    if (!invocation->arguments.empty() && isVerb(invocation->arguments.front()))
        command += " " + invocation->arguments.front();
    return command.empty() ? fallback : sanitizedUtf8(command);
}

std::string spokenRunner(const ProcessGlimpse& process) {
    constexpr std::size_t kMostWords = 4;
    constexpr std::size_t kLongest = 60;
    std::vector<std::string> words = process.commandLine;
    if (words.size() == 1) {
        // A title that the program has given itself.
        std::string title = std::move(words.front());
        words.clear();
        for (std::size_t start = 0; start < title.size() && words.size() < kMostWords;) {
            const std::size_t end = std::min(title.find(' ', start), title.size());
            if (end > start)
                words.push_back(title.substr(start, end - start));
            start = end + 1;
        }
    }
    if (words.empty())
        return spokenCommand(process);
    if (kindOfName(bareName(words.front())) == ProgramKind::other) {
        // An interpreter is left out where its script is what people know.
        const auto script =
            std::find_if(words.begin() + 1, words.end(),
                         [](const std::string& word) { return !word.starts_with('-'); });
        if (script != words.end() && kindOfName(toolName(*script)) != ProgramKind::other)
            words.erase(words.begin(), script);
    }
    words.front() = std::string(toolName(words.front()));
    words.resize(std::min(words.size(), kMostWords));
    const std::string command = maskedCommand(words);
    return command.size() <= kLongest ? command : words.front();
}

} // namespace zenlot
