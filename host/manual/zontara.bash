# Completion of zontara for bash, as `zontara completion` prints it.
_zontara() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "init import launch explain forecast reading overdue advance reprogram status sheet lint export demo rpc idl completion manual --help" -- "$current")
        return
    fi
    # The choices of an option, else the options; whatever else there is to write is a file.
    case "${COMP_WORDS[1]} $before" in
        "launch --kind") words="synchronised conventional meter all" ;;
        "sheet --lang") words="es en" ;;
        "lint --weekday") words="monday tuesday wednesday thursday friday saturday sunday" ;;
    esac
    [ -n "$words" ] || [[ $current != -* ]] || case ${COMP_WORDS[1]} in
        init) words="--help" ;;
        import) words="--help --restore --json" ;;
        launch) words="--help --date --kind --user --project --chapter --dry-run --json --orders --order-user --order-executor --order-external --order-priority --order-type" ;;
        explain) words="--help --on --json" ;;
        forecast) words="--help --from --weeks --json --csv --ics --html" ;;
        reading) words="--help --date --added --previous --unit --fuel --note --department --voucher --voucher-value --json" ;;
        overdue) words="--help --on --json" ;;
        advance) words="--help --json" ;;
        reprogram) words="--help --json" ;;
        status) words="--help --on --json" ;;
        sheet) words="--help --week --year --asset --lang --out" ;;
        lint) words="--help --on --weekday --json" ;;
        export) words="--help --json" ;;
        demo) words="--help" ;;
        rpc) words="--help --create --trace --now --short-date" ;;
        idl) words="--help --library --out --text" ;;
        completion) words="--help" ;;
        manual) words="--help" ;;
    esac
    [ -z "$words" ] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -o default -F _zontara zontara
