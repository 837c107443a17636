import Ludarium

// Over the window while all covers are copied to the local disk.
Sheet {
    wantedWidth: 420
    visible: App.thumbnails.running
    onOpened: (contentItem as ThumbnailProgress).focusCancel()

    contentItem: ThumbnailProgress {
        focus: true
    }
}
