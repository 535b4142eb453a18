# Completion of the command zu for bash.  Commands and options are those that the installed zu tells of itself; only what
# the values of options may be stands here.

_zu()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]} words=
    if [ "$previous" = = ]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    elif [ "$current" = = ]; then
        current=
    fi
    COMPREPLY=()
    if [ "$COMP_CWORD" = 1 ]; then
        words="$(zu --help | sed -n 's/^  \([a-z]*\)  .*/\1/p') --help --version"
    elif [[ $current == -* ]]; then
        words=$(zu "$command" --help 2>/dev/null | sed -n 's/^  \(-., \)\{0,1\}\(--[a-z-]*\).*/\2/p')
    else
        case "$command $previous" in
        "text --case") words="lower upper fold" ;;
        "text --normalize") words="NFC NFD NFKC NFKD" ;;
        "convert --errors") words="replace skip fail" ;;
        "convert --newlines") words="lf crlf cr nel ls ps" ;;
        "convert --from" | "convert --to") words=$(zu convert --list | sed 's/ .*//') ;;
        "store --to") words="text binary" ;;
        "store --type") words="bool int real" ;;
        "tags --type") words="or xor and not" ;;
        "store store") words="show get set del merge convert" ;;
        "tags tags") words="match rewrite" ;;
        "module module") words="check" ;;
        esac
    fi
    if [ "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
} &&
    complete -o default -F _zu zu
