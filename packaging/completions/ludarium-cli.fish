# Completion of ludarium-cli for fish.

complete -c ludarium-cli -f
complete -c ludarium-cli -l collection -r -a '(__fish_complete_directories)' -d 'Use the collection in this folder, for this run only'
complete -c ludarium-cli -l home -r -a '(__fish_complete_directories)' -d 'Keep settings, caches and logs below this folder'
complete -c ludarium-cli -l json -d 'Print JSON'
complete -c ludarium-cli -s v -l verbose -d 'Print the log on standard error too'
complete -c ludarium-cli -s h -l help -d 'Print a help text and end'
complete -c ludarium-cli -l version -d 'Print the version and end'

complete -c ludarium-cli -n __fish_use_subcommand -a demo -d 'Write the demo collection into a folder'
complete -c ludarium-cli -n __fish_use_subcommand -a platforms -d 'List the platforms with the number of their games'
complete -c ludarium-cli -n __fish_use_subcommand -a games -d 'List the games'
complete -c ludarium-cli -n __fish_use_subcommand -a show -d 'Show one game'
complete -c ludarium-cli -n __fish_use_subcommand -a playlists -d 'List the playlists with the number of their games'
complete -c ludarium-cli -n __fish_use_subcommand -a play -d 'Start a game'
complete -c ludarium-cli -n __fish_use_subcommand -a emulators -d 'List the emulators and where they are'
complete -c ludarium-cli -n __fish_use_subcommand -a log -d 'Print the log'

complete -c ludarium-cli -n '__fish_seen_subcommand_from demo' -a '(__fish_complete_directories)'
complete -c ludarium-cli -n '__fish_seen_subcommand_from games' -l search -x -d 'Only games with this text'
complete -c ludarium-cli -n '__fish_seen_subcommand_from games' -l platform -x -d 'Only games of this platform'
complete -c ludarium-cli -n '__fish_seen_subcommand_from games' -l limit -x -d 'At most this many'
complete -c ludarium-cli -n '__fish_seen_subcommand_from play' -l game-version -x -d 'Version to play'
complete -c ludarium-cli -n '__fish_seen_subcommand_from play' -l wait -d 'Wait until the game has ended'
complete -c ludarium-cli -n '__fish_seen_subcommand_from play' -l dry-run -d 'Print what would be started and why'
complete -c ludarium-cli -n '__fish_seen_subcommand_from log' -l path -d 'Print only where the log is'
