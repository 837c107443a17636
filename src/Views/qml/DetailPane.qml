import QtQuick
import QtQuick.Controls.Basic
import Ludarium

Rectangle {
    id: pane

    color: Theme.surface
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Game details")

    AppText {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.space24
        visible: !App.detail.hasGame
        text: qsTr("Select a game to see what it is about.")
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    Flickable {
        id: scroller

        anchors.fill: parent
        visible: App.detail.hasGame
        contentHeight: content.height + 2 * Theme.space16
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: AppScrollBar {}

        Column {
            id: content

            x: Theme.space16
            y: Theme.space16
            width: scroller.width - 2 * Theme.space16
            spacing: Theme.space12

            Item {
                width: parent.width
                height: art.coverHeight

                CoverArt {
                    id: art

                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.bottom: parent.bottom
                    width: Math.round(Math.min(parent.width, 240))
                    height: Math.round(width * 4 / 3)
                    source: App.detail.cover
                    title: App.detail.title
                    initials: App.detail.initials
                    hue: App.detail.hue
                }
            }
            AppText {
                width: parent.width
                topPadding: Theme.space8
                text: App.detail.title
                font.pixelSize: Theme.textHeadline
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                maximumLineCount: 4
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Flow {
                width: parent.width
                spacing: Theme.space8

                Repeater {
                    model: App.detail.chips

                    Chip {
                        required property string modelData

                        width: Math.min(implicitWidth, parent ? parent.width : implicitWidth)
                        text: modelData
                    }
                }
            }
            LaunchBox {
                width: parent.width
            }
            GalleryStrip {
                width: parent.width
            }
            Column {
                width: parent.width
                spacing: Theme.space4

                FactRow {
                    width: parent.width
                    name: qsTr("Genre")
                    value: App.detail.genre
                }
                FactRow {
                    width: parent.width
                    name: qsTr("Publisher")
                    value: App.detail.publisher
                }
                FactRow {
                    width: parent.width
                    name: qsTr("Series")
                    value: App.detail.series
                }
            }
            AppText {
                width: parent.width
                visible: text !== ""
                text: App.detail.text
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                lineHeight: 1.3
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    Connections {
        target: App.detail
        function onChanged() {
            scroller.contentY = 0;
        }
    }
}
