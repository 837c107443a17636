import Ludarium

// Which version of a game to launch, over the whole window.
Sheet {
    id: dialog

    wantedWidth: Math.round(460 * Math.min(Theme.textScale, 1.5))
    visible: App.launch.versions.active
    contentItem: GameVersionPickerView {
        focus: true
        listLimit: Math.max(120, (dialog.parent ? dialog.parent.height : 600) - 200 - 60 * Theme.textScale)
    }
    onOpened: (contentItem as GameVersionPickerView).begin()
}
