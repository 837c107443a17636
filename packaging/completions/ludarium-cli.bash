# Completion of ludarium-cli for bash.

_ludarium_cli() {
    local common="--collection --home --json --verbose --help --version"
    local commands="demo load refresh status platforms games search show images thumbnails playlists collections facets groups recent stats favorite rate note progress versions play emulators setup-status batch log"
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" word i

    case $previous in
        --collection | --home)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            compopt -o filenames 2>/dev/null
            return
            ;;
        --search | --platform | --limit | --genre | --developer | --publisher | --series | --year | --playlist | --collection-id | --game-version)
            return
            ;;
        --sort)
            mapfile -t COMPREPLY < <(compgen -W "title year developer rating recent plays" -- "$current")
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
        refresh) words="$common --clear-cache" ;;
        games) words="$common --search --platform --limit" ;;
        search)
            words="$common --genre --developer --publisher --series --year --platform --playlist --collection-id"
            words+=" --favorites --installed --sort --limit"
            ;;
        thumbnails) words="$common --platform" ;;
        facets) words="$common genres developers publishers series years" ;;
        groups) words="$common --search --limit" ;;
        favorite) words="$common --off" ;;
        rate) words="$common 0 1 2 3 4 5" ;;
        note) words="$common --clear" ;;
        progress) words="$common notPlayed playing beaten completed mastered" ;;
        play) words="$common --game-version --wait --dry-run --anyway" ;;
        batch)
            words="$common --all --installed --not-installed --yes --without-archive install uninstall add-to-favorites"
            words+=" remove-from-favorites add-to-playlist export-metadata verify-files"
            ;;
        log) words="$common --path --upload --yes" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _ludarium_cli ludarium-cli
