# Completion of zell-transfer-cli for fish.

set -l commands devices list dump export
set -l categories music movies tvShows podcasts audiobooks ringtones books playlists \
    voiceMemos cameraRoll photos
set -l none "not __fish_seen_subcommand_from $commands"
set -l device '__fish_seen_subcommand_from list dump export'
set -l export '__fish_seen_subcommand_from export'

complete -c zell-transfer-cli -f
complete -c zell-transfer-cli -l help -d 'Print the options and exit'
complete -c zell-transfer-cli -l version -d 'Print the version and exit'
complete -c zell-transfer-cli -n $none -a devices -d 'List the connected devices'
complete -c zell-transfer-cli -n $none -a list -d 'Show what a device holds'
complete -c zell-transfer-cli -n $none -a dump -d 'Print a library as JSON'
complete -c zell-transfer-cli -n $none -a export -d 'Copy media to this computer'

complete -c zell-transfer-cli -n "__fish_seen_subcommand_from $commands" -l wait -x \
    -d 'Wait so many seconds for the device'
complete -c zell-transfer-cli -n $device -l device -x -a '(__fish_complete_directories)' \
    -d 'A device key, or a folder that holds a player'
complete -c zell-transfer-cli -n '__fish_seen_subcommand_from devices list' -l json -d 'Print JSON'
complete -c zell-transfer-cli -n '__fish_seen_subcommand_from list' -a "$categories"
complete -c zell-transfer-cli -n '__fish_seen_subcommand_from dump' -l previews -x \
    -a '(__fish_complete_directories)' -d 'Write the preview pictures here'

complete -c zell-transfer-cli -n $export \
    -a "all everything media $categories playlist= album="
complete -c zell-transfer-cli -n $export -l to -x -a '(__fish_complete_directories)' \
    -d 'Copy into folders below this one'
complete -c zell-transfer-cli -n $export -l clash -x -a 'number overwrite skip' \
    -d 'What to do with files that exist already'
complete -c zell-transfer-cli -n $export -l report -r -F -d 'Write what became of each item here'
complete -c zell-transfer-cli -n $export -l quiet -d 'Show no progress'
complete -c zell-transfer-cli -n $export -l dry-run \
    -d 'Print what would be copied, and write nothing'
