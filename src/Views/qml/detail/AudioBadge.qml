import Ludarium

VersionBadge {
    ink: Theme.accent
}
