# Completion of ludarium-cli for bash.

_ludarium_cli() {
    local common="--collection --home --json --verbose --help --version"
    local commands="demo platforms games show playlists play emulators log"
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" word i

    case $previous in
        --collection | --home)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            compopt -o filenames 2>/dev/null
            return
            ;;
        --search | --platform | --limit | --game-version)
            return
            ;;
    esac

    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        case $word in
            --collection | --home) ((i++)) ;;
            -*) ;;
            *)
                command=$word
                break
                ;;
        esac
    done

    local words=$common
    case $command in
        "") words="$common $commands" ;;
        demo)
            if [[ $current != -* ]]; then
                mapfile -t COMPREPLY < <(compgen -d -- "$current")
                compopt -o filenames 2>/dev/null
                return
            fi
            ;;
        games) words="$common --search --platform --limit" ;;
        play) words="$common --game-version --wait --dry-run" ;;
        log) words="$common --path" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _ludarium_cli ludarium-cli
