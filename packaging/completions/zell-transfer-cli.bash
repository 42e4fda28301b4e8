# Completion of zell-transfer-cli for bash.

_zell_transfer_cli()
{
    local categories='music movies tvShows podcasts audiobooks ringtones books playlists
        voiceMemos cameraRoll photos'
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    local choices=

    case $previous in
        --device | --to | --previews)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --report)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        --clash)
            mapfile -t COMPREPLY < <(compgen -W 'number overwrite skip' -- "$current")
            return
            ;;
        --wait)
            COMPREPLY=()
            return
            ;;
    esac

    if ((COMP_CWORD == 1)); then
        choices='devices list dump export --help --version'
    else
        case ${COMP_WORDS[1]} in
            devices) choices='--json --wait --help --version' ;;
            list) choices="$categories --device --wait --json --help --version" ;;
            dump) choices='--device --wait --previews --help --version' ;;
            export)
                choices="all everything media $categories playlist= album= --device --wait --to
                    --clash --report --quiet --dry-run --help --version"
                ;;
        esac
    fi
    mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$current")
    # A name follows at once.
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
    return 0
}

complete -F _zell_transfer_cli zell-transfer-cli
