"""The installer: installs, replaces whole or not at all, and removes exactly what it installed."""
import itertools
import re
import shutil

import wine
from wine import WindowsTest, hold, packed, release, run, temporary_files, user, wait_until, windows

COMPANY = 'Müller Leasing'
titles = (f'Preisbuch {n}' for n in itertools.count(1))  # each test has an installation of its own


def setup_list(title, *more):
    """The set-up list as the program writes it: the title as a field of 25 characters, then its own entries."""
    text = wine.LIST.read_bytes().decode('cp1252').replace('|TITLE|', title.ljust(25)).rstrip('\r\n')
    entries = (f'File{n}={name},$(AppPath),,,3/24/3000 12:00:00 PM,6000,0.0.0.0' for n, name in enumerate(more, 7))
    return ''.join(f'\r\n{line}' for line in [*text.split('\r\n'), *entries, '']).encode('cp1252')


class SetupTest(WindowsTest):
    @classmethod
    def setUpClass(cls):
        cls.record = wine.preferences(COMPANY)

    def setUp(self):
        super().setUp()
        self.title = next(titles)
        self.source = self.folder / 'source'
        self.source.mkdir()
        self.installed = user('AppData/Local', self.title)
        self.files = {'calc.html': b'page 1', 'calcdata.txt': b'', 'general.dat': self.record, 'Supplier.dat': b'record',
                      'calc.ico': wine.ICON.read_bytes(), 'setup.exe': wine.SETUP.read_bytes()}

    def write(self, *listed):
        """The folder that the self-extractor leaves behind."""
        shutil.rmtree(self.source)
        self.source.mkdir()
        for name, content in self.files.items():
            (self.source / name).write_bytes(content)
        (self.source / 'Setup.lst').write_bytes(setup_list(self.title, *listed))

    def install(self, *listed):
        self.write(*listed)
        return run(self.source / 'setup.exe', '/S')

    def installed_files(self):
        return {p.name: p.read_bytes() for p in self.installed.iterdir() if p.name != 'Installed.lst'}

    def assert_installed(self, result):
        self.assertEqual((result.returncode, result.stderr), (0, ''))
        self.assertEqual(self.installed_files(), self.files)
        self.assertEqual(self.left_beside(), [])

    def left_beside(self):
        return [p.name for p in self.installed.parent.glob(f'{self.title}.*')]

    def shortcuts(self):
        places = user('Desktop'), user('AppData/Roaming/Microsoft/Windows/Start Menu/Programs')
        return [p for place in places for p in place.glob(f'{self.title}*.lnk')]

    def registered(self):
        key = f'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tarvolinex {self.title}'
        out = self.folder / 'entry.reg'
        if run('reg', 'export', key, windows(out), '/y').returncode != 0:
            return {}
        pairs = re.findall(r'^"(\w+)"=(?:dword:(\w+)|"(.*)")\r?$', out.read_text(encoding='utf-16'), re.M)
        return {name: int(number, 16) if number else text.replace('\\"', '"').replace('\\\\', '\\')
                for name, number, text in pairs}

    def uninstall(self):
        result = run(self.installed / 'setup.exe', '/uninstall', '/S')
        self.assertEqual(result.returncode, 0, result.stderr)


class Installs(SetupTest):
    def test_files_shortcuts_and_entry_and_takes_all_away_again(self):
        self.files |= {'Größe, neu!0.html': b'form', 'logo.GIF': b'logo'}
        self.assert_installed(self.install('logo.GIF', 'background.JPG', 'GRÖßE, NEU!0.HTML'))
        inside = f'\\AppData\\Local\\{self.title}\\'
        self.assertEqual(len(self.shortcuts()), 2)
        for shortcut in self.shortcuts():
            for name in ('calc.html', 'calc.ico'):
                path = f'C:\\users\\{user().name}{inside}{name}'
                self.assertTrue(any(path.encode(code) in shortcut.read_bytes() for code in ('utf-16-le', 'cp1252')))
        entry = self.registered()
        self.assertEqual(entry['DisplayName'], self.title)
        self.assertEqual(entry['Publisher'], COMPANY)
        self.assertTrue(entry['DisplayIcon'].endswith(inside + 'calc.ico'))
        self.assertTrue(entry['UninstallString'].endswith(inside + 'setup.exe" /uninstall'))
        size = sum(len(content) for content in self.files.values())
        self.assertEqual(entry['EstimatedSize'], -(-size // 1024))

        program, *arguments = entry['QuietUninstallString'].split('" ')
        run(program.strip('"'), *arguments[0].split())
        wait_until(lambda: not self.installed.exists() and not temporary_files())
        self.assertEqual((self.shortcuts(), self.registered()), ([], {}))

    def test_out_of_an_install_file(self):
        self.write()
        files = [(p.name, p.read_bytes()) for p in self.source.iterdir()]
        self.assert_installed(run(packed(self.folder, files), '/S'))

    def test_without_the_icon_its_own_is_shown(self):
        del self.files['calc.ico']
        self.assert_installed(self.install())
        self.assertIn('setup.exe', self.registered()['DisplayIcon'])
        self.assertIn('\\setup.exe'.encode('utf-16-le'), self.shortcuts()[0].read_bytes())

    def test_titles_become_safe_folder_names(self):
        for title, folder in (('A/B: "C"?', 'A_B_ _C__'), ('..', '_'), ('NUL', '_NUL'), ('Für Söhne.', 'Für Söhne')):
            self.title = title
            self.installed = user('AppData/Local', folder)
            self.assert_installed(self.install())
            self.uninstall()
            wait_until(lambda: not self.installed.exists() and not temporary_files())


class Replaces(SetupTest):
    def test_an_older_version_whole_and_keeps_what_is_the_users_own(self):
        self.files['OLD!0.HTML'] = b'an old form'
        self.assert_installed(self.install('OLD!0.HTML'))
        (self.installed / 'notes.txt').write_bytes(b'mine')
        del self.files['OLD!0.HTML']
        self.files |= {'calc.html': b'page 2', 'NEW!0.HTML': b'a new form'}
        result = self.install('NEW!0.HTML')
        self.files['notes.txt'] = b'mine'
        self.assert_installed(result)
        self.assertEqual(len(self.shortcuts()), 2)
        self.uninstall()
        wait_until(lambda: not (self.installed / 'Installed.lst').exists() and not temporary_files())
        self.assertEqual(self.installed_files(), {'notes.txt': b'mine'})
        del self.files['notes.txt']
        result = self.install('NEW!0.HTML')
        self.files['notes.txt'] = b'mine'
        self.assert_installed(result)

    def test_nothing_when_a_file_is_held(self):
        self.assert_installed(self.install())
        old, entry = dict(self.files), self.registered()
        holder = hold(self.installed / 'Supplier.dat')
        self.files |= {'calc.html': b'page 2', 'NEW!0.HTML': b'form'}
        self.assert_refused(self.install('NEW!0.HTML'), 'Supplier.dat')
        new, self.files = self.files, old
        self.assertEqual((self.installed_files(), self.registered()), (old, entry))
        self.assertEqual((len(self.shortcuts()), self.left_beside()), (2, []))
        release(holder)
        self.files = new
        self.assert_installed(self.install('NEW!0.HTML'))

    def cut_off(self):
        """Leaves what a power cut in the middle of an exchange leaves: old files moved out, some new ones in."""
        new, old = (self.installed.with_name(f'{self.title}.tarvolinex-{which}') for which in ('new', 'old'))
        new.mkdir()
        old.mkdir()
        (new / 'Pending.lst').write_bytes(b'calc.html\r\nNEW!0.HTML\r\nsetup.exe\r\nInstalled.lst\r\n')
        (new / 'setup.exe').write_bytes(b'new')
        (new / 'Installed.lst').write_bytes(b'Title=new\r\n')
        for name in ('calc.html', 'OLD!0.HTML', 'Installed.lst'):
            (self.installed / name).rename(old / name)
        (self.installed / 'calc.html').write_bytes(b'new')
        (self.installed / 'NEW!0.HTML').write_bytes(b'new')

    def test_an_exchange_that_was_cut_off_goes_back_at_the_next_start(self):
        self.files['OLD!0.HTML'] = b'an old form'
        self.assert_installed(self.install('OLD!0.HTML'))
        old = dict(self.files)
        self.cut_off()
        self.files['calc.ico'] = b''
        holder = hold(self.installed / 'general.dat')  # so that the new version does not come
        self.assert_refused(self.install('OLD!0.HTML'), 'general.dat')
        release(holder)
        self.files = old
        self.assertEqual((self.installed_files(), self.left_beside()), (old, []))
        self.cut_off()
        self.uninstall()
        wait_until(lambda: not self.installed.exists() and not temporary_files())
        self.assertEqual((self.left_beside(), self.shortcuts()), ([], []))

    def test_a_file_of_the_users_own_is_not_overwritten(self):
        self.installed.mkdir()
        (self.installed / 'calc.html').write_bytes(b'mine')
        self.assert_refused(self.install(), 'calc.html', 'not part of an older version')
        self.assertEqual((self.installed_files(), self.left_beside()), ({'calc.html': b'mine'}, []))

    def test_a_removal_that_meets_a_held_file_can_be_started_again(self):
        self.assert_installed(self.install())
        holder = hold(self.installed / 'calcdata.txt')
        self.uninstall()
        wait_until(lambda: not temporary_files())
        self.assertTrue((self.installed / 'setup.exe').exists() and self.registered())
        release(holder)
        self.uninstall()
        wait_until(lambda: not self.installed.exists() and not temporary_files())


class Refuses(SetupTest):
    def assert_installs_nothing(self, result, *words):
        self.assert_refused(result, *words)
        self.assertFalse(self.installed.exists())
        self.assertEqual((self.shortcuts(), self.registered(), self.left_beside()), ([], {}, []))

    def test_listed_names_that_are_no_plain_file_names_or_missing(self):
        for name in ('..\\evil.html', 'C:\\evil.html', 'sub\\evil.html', 'NUL.html', 'evil.html:x', '', 'evil.'):
            self.assert_installs_nothing(self.install(name), f'"{name}"', 'Setup.lst')
        self.assert_installs_nothing(self.install('CALC.HTML'), '"CALC.HTML"', 'twice')
        del self.files['general.dat']
        self.assert_installs_nothing(self.install('GONE!0.HTML'), '"general.dat" is missing')

    def test_without_a_list_or_a_title(self):
        self.write()
        (self.source / 'Setup.lst').write_bytes(setup_list(''))
        self.assert_installs_nothing(run(self.source / 'setup.exe', '/S'), 'names no title')
        (self.source / 'Setup.lst').unlink()
        self.assert_installs_nothing(run(self.source / 'setup.exe', '/S'), 'Setup.lst')
        self.assert_installs_nothing(run(self.source / 'setup.exe', '/S', '/uninstall'), 'Nothing is installed')


