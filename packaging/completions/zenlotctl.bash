# Completion of zenlotctl for bash.

# The ports that are listened on. Where several fit, each with its owner, which is never inserted: while
# more than one remains, no more is inserted than they have in common at their beginning.
_zenlotctl_ports() {
    local word=$1 port owner width
    local -a ports=() owners=()
    while IFS=$'\t' read -r port owner; do
        [[ $port == "$word"* ]] || continue
        ports+=("$port")
        owners+=("$owner")
    done < <(zenlotctl list --offers 2>/dev/null)
    # 9 and 63 show a list; others walk through it and insert what they come to.
    if ((${#ports[@]} < 2)) || [[ ${COMP_TYPE:-9} != 9 && $COMP_TYPE != 63 ]]; then
        COMPREPLY=("${ports[@]}")
        return
    fi
    width=$((${COLUMNS:-80} - 4))
    local place line
    for place in "${!ports[@]}"; do
        printf -v line '%-5s  %s' "${ports[place]}" "${owners[place]}"
        COMPREPLY+=("${line:0:width}")
    done
}

_zenlotctl() {
    local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]-}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W 'list check why stop doctor --help --version' -- "$word")
    elif ((COMP_CWORD == 2)); then
        case $command in
        list) mapfile -t COMPREPLY < <(compgen -W '--json --offers' -- "$word") ;;
        doctor) mapfile -t COMPREPLY < <(compgen -W '--json' -- "$word") ;;
        check | why | stop) _zenlotctl_ports "$word" ;;
        esac
    elif ((COMP_CWORD == 3)) && [[ $command == why ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--json' -- "$word")
    elif ((COMP_CWORD == 3)) && [[ $command == stop ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--yes' -- "$word")
    fi
}
complete -o nosort -F _zenlotctl zenlotctl
