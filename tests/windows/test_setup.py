"""The installer: installs, replaces whole or not at all, and removes exactly what it installed."""
import itertools
import re
import shutil

import wine
from wine import WindowsTest, begin, end, held, packed, press, run, temporary_files, user, wait_until, windows

COMPANY = 'Müller Leasing'
numbers = itertools.count(1)  # each test has an installation of its own
OLD, NEW = 'OLD!0.HTML', 'NEW!0.HTML'


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
        number = next(numbers)
        self.called(f'Preis: Buch {number:02}', f'Preis_ Buch {number:02}')
        self.source = self.folder / 'so;urce'
        self.files = {'calc.html': b'page 1', 'calcdata.txt': b'', 'general.dat': self.record, 'Supplier.dat': b'record',
                      'calc.ico': wine.ICON.read_bytes(), 'setup.exe': wine.SETUP.read_bytes()}

    def called(self, title, folder):
        self.title = title
        self.installed = user('AppData/Local/Tarvolinex', folder)
        self.downloaded = user('AppData/Local/Tarvolinex', f'{folder} (download)')

    def write(self, *listed):
        """The folder that the self-extractor leaves behind."""
        shutil.rmtree(self.source, ignore_errors=True)
        self.source.mkdir()
        for name, content in (self.files | {'Setup.lst': setup_list(self.title, *listed)}).items():
            (self.source / name).write_bytes(content)

    def install(self, *listed):
        self.write(*listed)
        return run(self.source / 'setup.exe', '/S')

    def download(self, more={}):
        """What a link leads to: an install file without the installer."""
        self.write()
        files = {p.name: p.read_bytes() for p in self.source.iterdir() if p.name != 'setup.exe'} | more
        return packed(self.folder, [*files.items()], title=f'{self.title.ljust(25)} Self-Extractor')

    def installed_files(self, folder=None):
        return {p.name: p.read_bytes() for p in (folder or self.installed).iterdir() if p.name != 'Installed.lst'}

    def assert_installed(self, result, files=None):
        self.assertEqual((result.returncode, result.stderr), (0, ''))
        self.assertTrue(self.installed_files() == (files or self.files))
        self.assertEqual((len(self.shortcuts()), self.left_beside()), (2, []))

    def assert_gone(self):
        self.assertFalse(self.installed.exists())
        self.assertEqual((self.shortcuts(), self.registered(), self.left_beside()), ([], {}, []))

    def left_beside(self):
        return [p.name for p in self.installed.parent.glob(f'{self.installed.name}*.tarvolinex*')]

    def shortcuts(self):
        places = user('Desktop'), user('AppData/Roaming/Microsoft/Windows/Start Menu/Programs')
        return [p for place in places for p in place.glob(f'{self.installed.name}*.lnk')]

    def registered(self):
        key = f'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tarvolinex {self.installed.name}'
        out = self.folder / 'entry.reg'
        if run('reg', 'export', key, windows(out), '/y').returncode != 0:
            return {}
        pairs = re.findall(r'^"(\w+)"=(?:dword:|"?)(.*?)"?\r?$', out.read_text(encoding='utf-16'), re.M)
        return {name: text.replace('\\"', '"').replace('\\\\', '\\') for name, text in pairs}

    def cut_off(self):
        """Leaves what a power cut in the middle of an exchange leaves: old files moved out, some new ones in."""
        new, old = (self.installed.with_name(f'{self.installed.name}.tarvolinex-{which}') for which in ('new', 'old'))
        new.mkdir()
        old.mkdir()
        (new / 'Pending.lst').write_bytes(b'calc.html\r\nNEW!0.HTML\r\nsetup.exe\r\nInstalled.lst\r\n')
        (new / 'setup.exe').write_bytes(b'new')
        (new / 'Installed.lst').write_bytes(b'Title=new\r\n')
        for name in ('calc.html', OLD, 'Installed.lst'):
            (self.installed / name).rename(old / name)
        (self.installed / 'calc.html').write_bytes(b'new')
        (self.installed / NEW).write_bytes(b'new')

    def uninstall(self):
        """Starts the removal and waits for the copy that does it."""
        result = run(self.installed / 'setup.exe', '/uninstall', '/S')
        self.assertEqual(result.returncode, 0, result.stderr)
        wait_until(lambda: not temporary_files())


class Installs(SetupTest):
    def test_files_shortcuts_and_entry_and_takes_all_away_again(self):
        self.files |= {'Größe, neu!0.html': b'form', 'logo.GIF': b'logo'}
        self.assert_installed(self.install('logo.GIF', 'background.JPG', 'GRÖßE, NEU!0.HTML'))
        inside = f'\\AppData\\Local\\Tarvolinex\\{self.installed.name}\\'
        for shortcut in self.shortcuts():
            for name in ('calc.html', 'calc.ico'):
                path = f'C:\\users\\{user().name}{inside}{name}'
                self.assertTrue(any(path.encode(code) in shortcut.read_bytes() for code in ('utf-16-le', 'cp1252')))
        entry = self.registered()
        self.assertEqual((entry['DisplayName'], entry['Publisher']), (self.title, COMPANY))
        self.assertTrue(entry['DisplayIcon'].endswith(inside + 'calc.ico'))
        self.assertTrue(entry['UninstallString'].endswith(inside + 'setup.exe" /uninstall'))
        self.assertEqual(int(entry['EstimatedSize'], 16), -(-sum(map(len, self.files.values())) // 1024))
        program, arguments = entry['QuietUninstallString'].split('" ')
        run(program.strip('"'), *arguments.split())
        wait_until(lambda: not temporary_files())
        self.assert_gone()

    def test_titles_become_safe_names_of_folders_of_its_own_and_without_the_icon_the_installers_is_shown(self):
        def others():
            return sorted(p for p in local.rglob('*') if 'tarvolinex' not in str(p).lower())

        local = user('AppData/Local')
        (local / 'Microsoft').mkdir(exist_ok=True)
        before = others()
        del self.files['calc.ico']
        for title, folder in (('A/B: "C"?', 'A_B_ _C__'), ('..', '_'), ('NUL', '_NUL'), ('Für Söhne.', 'Für Söhne'),
                              ('Temp', 'Temp'), ('Microsoft', 'Microsoft'), ('Tarvolinex', 'Tarvolinex')):
            self.called(title, folder)
            self.assert_installed(self.install())
            self.assertIn('setup.exe', self.registered()['DisplayIcon'])
            self.assertIn('\\setup.exe'.encode('utf-16-le'), self.shortcuts()[0].read_bytes())
            self.assertEqual(run(self.download(), '/S').returncode, 0)
            self.uninstall()
            self.assert_gone()
            self.assertTrue((self.downloaded / 'calc.html').exists())
        self.assertEqual(others(), before)

    def test_two_titles_of_one_folder_name_beside_each_other(self):
        self.assert_installed(self.install())
        first, title = self.installed, self.title.replace(':', '_')
        self.called(title, f'{title} ({COMPANY})')
        self.assert_installed(self.install())
        self.uninstall()
        self.assert_gone()
        self.assertTrue((first / 'calc.html').exists())


class Replaces(SetupTest):
    def test_what_the_first_versions_put_among_the_folders_of_others(self):
        self.assert_installed(self.install())
        former = user('AppData/Local', self.installed.name)
        shutil.copytree(self.installed, former)
        (former / 'notes.txt').write_bytes(b'mine')
        shutil.rmtree(self.installed)
        self.assert_installed(self.install())
        self.assertEqual([p.name for p in former.iterdir()], ['notes.txt'])
        self.uninstall()
        self.assert_gone()

    def test_an_older_version_whole_or_not_at_all_and_keeps_what_is_the_users_own(self):
        own = {'notes.txt': b'mine'}
        self.files[OLD] = b'an old form'
        self.assert_installed(self.install(OLD))
        (self.installed / 'notes.txt').write_bytes(b'mine')
        old, entry = self.files | own, self.registered()
        del self.files[OLD]
        self.files |= {'calc.html': b'page 2', NEW: b'a new form'}
        with held(self.installed / 'Supplier.dat'):
            self.assert_refused(self.install(NEW), 'Supplier.dat')
        self.assertTrue(self.installed_files() == old)
        self.assertEqual((self.registered(), len(self.shortcuts()), self.left_beside()), (entry, 2, []))
        for _ in range(2):  # the second time beside what the removal left
            self.assert_installed(self.install(NEW), self.files | own)
            self.uninstall()
            self.assertEqual(self.installed_files(), own)

    def test_nothing_meanwhile_another_does_and_goes_back_when_it_was_cut_off(self):
        self.files[OLD] = b'an old form'
        self.assert_installed(self.install(OLD))
        old = dict(self.files)
        download = self.download()
        self.files['calc.ico'] = b''
        self.write(OLD)
        self.cut_off()
        before = self.installed_files()
        with held():
            waiting = [begin(self.source / 'setup.exe', '/S'), begin(download, '/S'),
                       begin(self.installed / 'setup.exe', '/uninstall', '/S'),
                       begin(self.source / 'setup.exe', '/uninstall', f'/from={windows(self.installed)}', '/S')]
            for process in waiting:
                self.assert_refused(end(process), 'Another installation')
        self.assertTrue(self.installed_files() == before)
        self.assertFalse(self.downloaded.exists())
        with held(self.installed / 'general.dat'):  # so that the new version does not come
            self.assert_refused(self.install(OLD), 'general.dat')
        self.assertTrue(self.installed_files() == old)
        self.assertEqual(self.left_beside(), [])
        self.cut_off()
        self.uninstall()
        self.assert_gone()

    def test_neither_a_file_of_the_users_own_nor_what_another_program_holds_of_an_earlier_exchange(self):
        left = self.installed.with_name(f'{self.installed.name}.tarvolinex-new')
        for folder in (self.installed, left):
            folder.mkdir()
            (folder / 'calc.html').write_bytes(b'mine')
        with held(left / 'calc.html'):
            self.assert_refused(self.install(), left.name, '(183)')
        self.assert_refused(self.install(), 'calc.html', 'not part of an older version')
        self.assertEqual((self.installed_files(), self.left_beside()), ({'calc.html': b'mine'}, []))

    def test_a_removal_that_meets_a_held_file_can_be_started_again(self):
        self.assert_installed(self.install())
        with held(self.installed / 'calcdata.txt'):
            self.uninstall()
        self.assertTrue((self.installed / 'setup.exe').exists() and self.registered())
        with held(self.installed / 'setup.exe'):
            removal = run(self.source / 'setup.exe', '/uninstall', f'/from={windows(self.installed)}', '/S')
            self.assert_refused(removal, 'setup.exe')
        self.assertTrue(self.registered())
        self.uninstall()
        self.assert_gone()

    def test_its_own_companys_alone_of_two_with_one_title(self):
        alphas = self.files
        self.assert_installed(self.install())
        self.assertEqual(run(self.download(), '/S').returncode, 0)
        installed, downloaded = self.installed, self.installed_files(self.downloaded)
        self.files = alphas | {'general.dat': wine.preferences('Beta & Co'), 'calc.html': b'page of Beta'}
        alphas_download = self.downloaded
        self.called(self.title, f'{installed.name} (Beta & Co)')
        for _ in range(2):
            self.assert_installed(self.install())
            self.assertEqual(run(self.download(), '/S').returncode, 0)
        self.assertEqual(self.registered()['DisplayName'], f'{self.title} (Beta & Co)')
        self.assertEqual(self.installed_files(self.downloaded)['calc.html'], b'page of Beta')
        self.assertTrue(self.installed_files(installed) == alphas)
        self.assertTrue(self.installed_files(alphas_download) == downloaded)

    def test_a_download_whole_or_not_at_all_beside_an_installation(self):
        self.assertEqual(run(self.download({OLD: b'an old form'}), '/S').returncode, 0)
        old = self.installed_files(self.downloaded)
        self.assertEqual({OLD, 'calc.html', 'Setup.lst'} - old.keys(), set())
        self.assert_installed(self.install())
        (self.downloaded / 'notes.txt').write_bytes(b'mine')
        old['notes.txt'] = b'mine'
        newer = self.download({'calc.html': b'page 2', NEW: b'a new form'})
        with held(self.downloaded / 'calc.html'):
            self.assert_refused(run(newer, '/S'), 'calc.html')
        self.assertTrue(self.installed_files(self.downloaded) == old)
        self.assertEqual(run(newer, '/S').returncode, 0)
        del old[OLD]
        self.assertTrue(self.installed_files(self.downloaded) == old | {'calc.html': b'page 2', NEW: b'a new form'})
        self.assertTrue(self.installed_files() == self.files)
        self.assertEqual(self.left_beside(), [])


class Asks(SetupTest):
    def assert_opened(self, folder):
        seen = wine.root / 'seen'
        wait_until(lambda: seen.exists() and seen.stat().st_size)
        page = seen.read_text(encoding='utf-8').split('\n')[1].strip()
        self.assertEqual(page, f'C:\\users\\{user().name}\\AppData\\Local\\Tarvolinex\\{folder.name}\\calc.html')
        seen.unlink()

    def test_first_then_opens_the_calculator_and_tells_a_failure_but_asks_nothing_for_a_download(self):
        self.called('Preis: Söhne', 'Preis_ Söhne')
        command = f'"{windows(wine.root)}\\helper.exe" "%1"'
        for key, value in (('.html', 'page'), ('page\\shell\\open\\command', command)):
            run('reg', 'add', f'HKCR\\{key}', '/ve', '/d', value, '/f')
        self.assertEqual(run(self.download()).returncode, 0)
        self.assert_opened(self.downloaded)
        self.write()
        for button, status in ((2, 2), (1, 0)):
            self.assertFalse(self.installed.exists())
            setup = begin(self.source / 'setup.exe')
            self.assertIn(f'Install "{self.title}"', press(button, self.title))
            self.assertEqual(end(setup).returncode, status)
        self.assert_opened(self.installed)
        for button, status in ((2, 2), (1, 0)):
            removal = begin(self.installed / 'setup.exe')
            self.assertIn(f'Remove "{self.title}"', press(button, self.title))
            if button == 1:
                self.assertIn('was removed', press(1, self.title))
            self.assertEqual(end(removal).returncode, status)
        wait_until(lambda: not temporary_files())
        self.assert_gone()
        (self.source / 'general.dat').unlink()
        setup = begin(self.source / 'setup.exe')
        press(1, self.title)
        self.assertIn('"general.dat" is missing', press(1, 'Setup'))
        self.assertEqual(end(setup).returncode, 1)


class Refuses(SetupTest):
    def test_lists_without_a_title_or_with_names_that_are_missing_or_no_plain_file_names(self):
        for name in ('..\\evil.html', 'C:\\evil.html', 'sub\\evil.html', 'NUL.html', 'evil.html:x', '', 'evil.'):
            self.assert_refused(self.install(name), f'"{name}"', 'Setup.lst')
        self.assert_refused(self.install('CALC.HTML'), '"CALC.HTML"', 'twice')
        (self.source / 'Setup.lst').write_bytes(setup_list(''))
        self.assert_refused(run(self.source / 'setup.exe', '/S'), 'names no title')
        (self.source / 'Setup.lst').unlink()
        self.assert_refused(run(self.source / 'setup.exe', '/S'), 'Setup.lst')
        self.assert_refused(run(self.source / 'setup.exe', '/S', '/uninstall'), 'Nothing is installed')
        del self.files['general.dat']
        self.assert_refused(self.install('GONE!0.HTML'), '"general.dat" is missing')
        self.assert_gone()
