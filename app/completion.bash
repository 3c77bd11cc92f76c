# bash completion of the program loopwise: subcommands, options and methods are those that its --help lists.

_loopwise()
{
    local program=${1/#\~/$HOME} word=$2 previous=$3 command='' line value='' list=''
    local subcommands=() options=() methods=()
    # `--option=word` comes in three pieces.
    [[ $word == = ]] && word=''
    [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
    COMPREPLY=()
    ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}
    while IFS= read -r line; do
        if [[ $line == Subcommands: || $line == Methods: ]]; then
            list=$line
        elif [[ -z $line ]]; then
            list=''
        elif [[ $list == Methods: && $line =~ ^\ \ ([a-z-]+)\  ]]; then
            methods+=("${BASH_REMATCH[1]}")
        elif [[ $list && $line =~ ^\ \ ([a-z]+)\  ]]; then
            subcommands+=("${BASH_REMATCH[1]}")
        elif [[ $line =~ ^\ \ ((-[A-Za-z]),\ )?(--[a-z-]+)(\ ([^ ]+))?(\ \ |$) ]]; then
            options+=("${BASH_REMATCH[3]}")
            [[ $previous == "${BASH_REMATCH[3]}" || $previous == "${BASH_REMATCH[2]:-none}" ]] &&
                value=${BASH_REMATCH[5]}
        fi
    done < <("$program" ${command:+"$command"} --help 2>/dev/null)

    local words=''
    case $value in
        '')
            if [[ $word == -* ]]; then
                words=${options[*]}
            elif [[ -z $command ]]; then
                words=${subcommands[*]}
            elif ((${#options[@]})); then
                value=FILE
            fi
            ;;
        METHOD) words=${methods[*]} ;;
        'N|all') words=all ;;
    esac
    if [[ $value == FILE ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames 2>/dev/null
    elif [[ $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    fi
}
complete -F _loopwise loopwise
