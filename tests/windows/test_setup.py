"""The installer: installs, replaces whole or not at all, and removes exactly what it installed."""
import itertools
import re
import shutil

import wine
from wine import WindowsTest, begin, end, hold, packed, press, release, run, temporary_files, user, wait_until, windows

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
        self.downloaded = user('AppData/Local', f'{self.title} (download)')
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

    def download(self, files):
        """What a link leads to: an install file without the installer."""
        self.write()
        (self.source / 'setup.exe').unlink()
        for name, content in files.items():
            (self.source / name).write_bytes(content)
        files = [(p.name, p.read_bytes()) for p in self.source.iterdir()]
        return packed(self.folder, files, title=f'{self.title.ljust(25)} Self-Extractor')

    def installed_files(self, folder=None):
        return {p.name: p.read_bytes() for p in (folder or self.installed).iterdir() if p.name != 'Installed.lst'}

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
        holder = hold('hold', windows(self.installed / 'Supplier.dat'))
        self.files |= {'calc.html': b'page 2', 'NEW!0.HTML': b'form'}
        self.assert_refused(self.install('NEW!0.HTML'), 'Supplier.dat')
        new, self.files = self.files, old
        self.assertEqual((self.installed_files(), self.registered()), (old, entry))
        self.assertEqual((len(self.shortcuts()), self.left_beside()), (2, []))
        release(holder)
        self.files = new
        self.assert_installed(self.install('NEW!0.HTML'))

    def test_an_exchange_that_was_cut_off_goes_back_at_the_next_start(self):
        self.files['OLD!0.HTML'] = b'an old form'
        self.assert_installed(self.install('OLD!0.HTML'))
        old = dict(self.files)
        self.cut_off()
        self.files['calc.ico'] = b''
        holder = hold('hold', windows(self.installed / 'general.dat'))  # so that the new version does not come
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
        holder = hold('hold', windows(self.installed / 'calcdata.txt'))
        self.uninstall()
        wait_until(lambda: not temporary_files())
        self.assertTrue((self.installed / 'setup.exe').exists() and self.registered())
        release(holder)
        holder = hold('hold', windows(self.installed / 'setup.exe'))
        from_here = f'/from={windows(self.installed)}'
        self.assert_refused(run(self.source / 'setup.exe', '/uninstall', from_here, '/S'), 'setup.exe')
        self.assertTrue(self.registered())
        release(holder)
        self.uninstall()
        wait_until(lambda: not self.installed.exists() and not temporary_files())
        self.assertEqual(self.registered(), {})

    def test_what_an_earlier_exchange_left_and_another_program_holds(self):
        left = self.installed.with_name(f'{self.title}.tarvolinex-new')
        left.mkdir()
        (left / 'calc.html').touch()
        holder = hold('hold', windows(left / 'calc.html'))
        self.assert_refused(self.install(), left.name, '(183)')
        release(holder)
        self.assert_installed(self.install())


class Downloads(SetupTest):
    def test_beside_an_installation_and_replaced_whole(self):
        """A link first, then an installation, then a newer link."""
        self.assertEqual(run(self.download({'OLD!0.HTML': b'an old form'}), '/S').returncode, 0)
        old = self.installed_files(self.downloaded)
        self.assertEqual({'OLD!0.HTML', 'calc.html', 'Setup.lst'} - old.keys(), set())
        self.assert_installed(self.install())
        (self.downloaded / 'notes.txt').write_bytes(b'mine')
        newer = self.download({'calc.html': b'page 2', 'NEW!0.HTML': b'a new form'})
        holder = hold('hold', windows(self.downloaded / 'calc.html'))
        self.assert_refused(run(newer, '/S'), 'calc.html')
        release(holder)
        self.assertEqual(self.installed_files(self.downloaded), old | {'notes.txt': b'mine'})
        self.assertEqual(run(newer, '/S').returncode, 0)
        new = {**old, 'calc.html': b'page 2', 'NEW!0.HTML': b'a new form', 'notes.txt': b'mine'}
        del new['OLD!0.HTML']
        self.assertEqual(self.installed_files(self.downloaded), new)
        self.assertEqual(self.installed_files(), self.files)
        self.assertEqual(list(self.downloaded.parent.glob('*.tarvolinex-*')), [])


class Asks(SetupTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        classes = 'HKCR\\'
        run('reg', 'add', f'{classes}.html', '/ve', '/d', 'page', '/f')
        run('reg', 'add', f'{classes}page\\shell\\open\\command', '/ve', '/d', f'"{windows(wine.root)}\\helper.exe" "%1"', '/f')

    def opened(self):
        """The page that was opened, by its full path."""
        wait_until(lambda: (wine.root / 'seen').exists() and (wine.root / 'seen').stat().st_size)
        _, page, *_ = (wine.root / 'seen').read_text(encoding='utf-8').split('\n')
        (wine.root / 'seen').unlink()
        return page.strip()

    def test_first_and_then_opens_the_calculator(self):
        self.title = f'{self.title} für Söhne'
        self.installed = user('AppData/Local', self.title)
        self.write()
        for button, status in ((2, 2), (1, 0)):
            self.assertFalse(self.installed.exists())
            setup = begin(self.source / 'setup.exe')
            self.assertIn(f'Install "{self.title}"', press(button, self.title))
            self.assertEqual(end(setup).returncode, status)
        self.assertEqual(self.opened(), f'C:\\users\\{user().name}\\AppData\\Local\\{self.title}\\calc.html')
        for button, status in ((2, 2), (1, 0)):
            removal = begin(self.installed / 'setup.exe')
            self.assertIn(f'Remove "{self.title}"', press(button, self.title))
            if button == 1:
                self.assertIn('was removed', press(1, self.title))
            self.assertEqual(end(removal).returncode, status)
        wait_until(lambda: not temporary_files())
        self.assertFalse(self.installed.exists())

    def test_nothing_for_a_download_and_opens_it(self):
        self.assertEqual(run(self.download({})).returncode, 0)
        self.assertEqual(self.opened(), f'C:\\users\\{user().name}\\AppData\\Local\\{self.downloaded.name}\\calc.html')

    def test_and_tells_a_failure_in_a_window(self):
        self.write()
        (self.source / 'general.dat').unlink()
        setup = begin(self.source / 'setup.exe')
        press(1, self.title)
        self.assertIn('"general.dat" is missing', press(1, 'Setup'))
        self.assertEqual(end(setup).returncode, 1)


class Waits(SetupTest):
    def test_for_another_installation_and_touches_nothing_meanwhile(self):
        self.files['OLD!0.HTML'] = b'an old form'
        self.assert_installed(self.install('OLD!0.HTML'))
        download = self.download({})
        self.write('OLD!0.HTML')
        self.cut_off()
        before = self.installed_files()
        other = hold('lock')
        waiting = [begin(self.source / 'setup.exe', '/S'), begin(download, '/S'),
                   begin(self.installed / 'setup.exe', '/uninstall', '/S'),
                   begin(self.source / 'setup.exe', '/uninstall', f'/from={windows(self.installed)}', '/S')]
        for process in waiting:
            self.assert_refused(end(process), 'Another installation')
        release(other)
        self.assertEqual(self.installed_files(), before)
        self.assertFalse(self.downloaded.exists())


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
